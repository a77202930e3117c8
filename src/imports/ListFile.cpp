#include "imports/ListFile.h"

#include "core/Error.h"
#include "imports/CardRows.h"
#include "imports/DelimitedRows.h"
#include "imports/WorkbookRows.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace imports {

namespace {

/// A file that nobody can read on once it is told to stop: a large one would be waited for.
class StoppableFile : public QFile
{
public:
    StoppableFile(const QString &path, const Stops &stops) : QFile(path), m_stops(stops) {}

protected:
    qint64 readData(char *data, qint64 maxSize) override
    {
        return m_stops && m_stops() ? -1 : QFile::readData(data, maxSize);
    }

private:
    Stops m_stops;
};

std::unique_ptr<QIODevice> opened(const QString &path, const Stops &stops)
{
    auto file = std::make_unique<StoppableFile>(path, stops);
    if (!file->open(QIODevice::ReadOnly)) {
        throw core::Error(0, file->errorString());
    }
    return file;
}

std::unique_ptr<ForeignText> textOf(const QString &path, int codePage, const Stops &stops)
{
    return std::make_unique<ForeignText>(opened(path, stops), codePage);
}

ListForm formOfText(const QString &path, int systemCodePage, const Stops &stops)
{
    constexpr qsizetype looksAt = 4096;
    ListForm form{.codePage = codePageOf(*opened(path, stops), systemCodePage)};
    const QByteArray head = textOf(path, form.codePage, stops)->read().left(looksAt);
    if (head.contains('\0')) {
        throw core::Error(0, u"this is no list of texts, no workbook (.xlsx) and no file of cards (.vcf)"_s);
    }
    if (head.trimmed().left(16).toUpper().startsWith("BEGIN:VCARD")) {
        form.kind = ListKind::Cards;
    } else {
        form.separator = separatorOf(textOf(path, form.codePage, stops));
    }
    return form;
}

} // namespace

ListForm formOf(const QString &path, int systemCodePage, const Stops &stops)
{
    const QByteArray head = opened(path, stops)->read(8);
    if (head.startsWith("PK\x03\x04")) {
        ZipFile workbook(opened(path, stops));
        ListForm form{.kind = ListKind::Workbook};
        for (const Sheet &sheet : sheetsOf(workbook)) {
            form.sheets.append(sheet.name);
        }
        return form;
    }
    if (head.startsWith("\xD0\xCF\x11\xE0")) {
        throw core::Error(0,
                          u"this is an old or an encrypted workbook: save it as .xlsx without a password"_s);
    }
    return formOfText(path, systemCodePage, stops);
}

std::unique_ptr<RowSource> openList(const QString &path, const ListForm &form, const Stops &stops)
{
    switch (form.kind) {
    case ListKind::Workbook: {
        auto workbook = std::make_unique<ZipFile>(opened(path, stops));
        const QString part = sheetsOf(*workbook).value(form.sheet).part;
        return std::make_unique<WorkbookRows>(std::move(workbook), part);
    }
    case ListKind::Cards:
        return std::make_unique<CardRows>(textOf(path, form.codePage, stops));
    case ListKind::Text:
        break;
    }
    return std::make_unique<DelimitedRows>(textOf(path, form.codePage, stops), form.separator);
}

} // namespace imports
