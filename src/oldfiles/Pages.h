#pragma once

#include "oldfiles/Bytes.h"
#include "oldfiles/TextForm.h"

#include <QList>

namespace oldfiles {

/// The two versions of the format differ in sizes and places only.
enum class Version { Jet3, Jet4 };

/// Where a row stands: 24 bits of page, 8 bits of row.
using RowPointer = quint32;

enum class PageType : quint8 { Data = 1, Definition = 2, UsageMap = 5 };

/// Whether a file begins as a Jet database does, of whatever version.
bool hasJetSignature(QByteArrayView file);

/// The pages of one file, and the rows on them as bytes.
class Pages
{
public:
    /// `file` must outlive the pages. Throws core::Error for a file that is no old database or cannot be read
    /// as one.
    explicit Pages(QByteArrayView file);

    Version version() const { return m_version; }
    const TextForm &texts() const { return m_texts; }
    qint64 fileSize() const { return m_file.size(); }
    qint64 pageSize() const;

    /// A page of that type. Throws Damage for another one, or none.
    Bytes page(quint32 number, PageType type) const;

    /// One row of a data page.
    struct Row
    {
        quint16 flags = 0; ///< Pointer and Moved; both: deleted
        Bytes bytes;
    };
    enum RowFlags : quint16 { Pointer = 0x4000, Moved = 0x8000, Deleted = 0xC000 };
    int rowsOn(const Bytes &page) const;
    quint16 flagsOn(const Bytes &page, int row) const;
    Row rowOn(const Bytes &page, int row) const;
    Row row(RowPointer pointer) const;

    /// The page of the definition to whose table a data page belongs.
    static quint32 ownerOf(const Bytes &dataPage) { return dataPage.u32(ownerAt); }
    /// The pages of a usage map, in order, none twice.
    QList<quint32> pagesIn(RowPointer usageMap) const;

private:
    static constexpr qint64 ownerAt = 4;
    qint64 rowListAt() const { return m_version == Version::Jet4 ? 14 : 10; }
    qint64 pageCount() const { return m_file.size() / pageSize(); }
    void readHeader();
    void addBits(const Bytes &bitmap, qint64 firstPage, QList<quint32> &pages) const;

    Bytes m_file;
    Version m_version = Version::Jet4;
    TextForm m_texts;
};

} // namespace oldfiles
