#include "Support.h"
#include "core/Error.h"
#include "imports/CardRows.h"
#include "imports/DelimitedRows.h"
#include "imports/WorkbookRows.h"

#include <QBuffer>

#include <cstdint>

using namespace Qt::StringLiterals;

namespace {

std::unique_ptr<QIODevice> deviceOf(const QByteArray &bytes)
{
    auto device = std::make_unique<QBuffer>();
    device->setData(bytes);
    device->open(QIODevice::ReadOnly);
    return device;
}

std::unique_ptr<imports::ForeignText> textOf(const QByteArray &bytes, int codePage)
{
    return std::make_unique<imports::ForeignText>(deviceOf(bytes), codePage);
}

void readAll(imports::RowSource &source)
{
    for (auto row = source.next(); row; row = source.next()) {
        require(row->cells.size() <= imports::mostColumns);
        require(row->trouble != imports::RowTrouble::None || !imports::isBlank(row->cells));
        for (const QString &cell : std::as_const(row->cells)) {
            require(cell.size() <= imports::mostCellCharacters);
        }
        const int perMille = source.perMille();
        require(perMille >= 0 && perMille <= 1000);
    }
}

void readBook(const QByteArray &bytes)
{
    imports::ZipFile book(deviceOf(bytes));
    for (const imports::Sheet &sheet : imports::sheetsOf(book)) {
        imports::WorkbookRows rows(std::make_unique<imports::ZipFile>(deviceOf(bytes)), sheet.part);
        readAll(rows);
    }
}

} // namespace

/// The first byte says what the others are: a packed workbook begins with its own, as cards do.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    try {
        QBuffer file;
        file.setData(bytes);
        file.open(QIODevice::ReadOnly);
        const int codePage = imports::codePageOf(file, size % 2 == 0 ? 936 : 1252);
        if (bytes.startsWith("PK")) {
            readBook(bytes);
        } else if (bytes.left(1).toUpper() == "B") {
            imports::CardRows cards(textOf(bytes, codePage));
            readAll(cards);
        } else {
            imports::DelimitedRows rows(textOf(bytes, codePage),
                                        imports::separatorOf(textOf(bytes, codePage)));
            readAll(rows);
        }
    } catch (const core::Error &) { // told to the operator
    }
    return 0;
}
