#pragma once

#include "core/TsvTable.h"

#include <QDir>

namespace mkdesk {

/// The text sources of the delivered files: the folder data/ of the source tree, or the copy of it in the
/// program.
class DeskSources
{
public:
    /// Throws core::Error when `folder` does not hold them.
    explicit DeskSources(const QString &folder = embedded());
    static QString embedded();

    /// A file's text, by its path below the folder. Throws core::Error.
    QString text(const QString &path) const;
    core::TsvTable table(const QString &path) const;

    /// The texts of all windows in one table with the columns `id`, `ENG`, `CHS` and `CHT`; empty where a
    /// Chinese text is missing.
    core::TsvTable languageTexts() const;
    /// The codes of the languages that have a file of their own; their texts stand in lang/<code>/<area>.tsv.
    QStringList languageCodes() const;
    /// The rows of such a file, with the columns `item`, `userlanguage` and `english`. A key whose text is
    /// empty has no row.
    core::TsvTable languageFile(const QString &code) const;
    /// The codes of the languages that have help pages.
    QStringList helpLanguages() const;
    /// The IDs of a language's help pages; each is the file help/<code>/<id>.txt.
    QStringList helpIds(const QString &code) const;

private:
    QStringList folders(const QString &path) const;
    /// The texts of one language, with the columns `id` and `text`.
    core::TsvTable areas(const QString &code) const;
    /// The same by upper-case ID.
    QHash<QString, QString> textsById(const QString &code) const;

    QDir m_folder;
};

} // namespace mkdesk
