#pragma once

#include "oldfiles/Pages.h"

#include <QList>
#include <QString>

namespace oldfiles {

/// The numbers are the file's own; one that is not named here is kept as bare bytes.
enum class ColumnType : quint8 {
    YesNo = 0x01,
    Byte = 0x02,
    Integer = 0x03,
    Long = 0x04,
    Currency = 0x05,
    Single = 0x06,
    Double = 0x07,
    Date = 0x08,
    Binary = 0x09,
    Text = 0x0A,
    Ole = 0x0B,
    Memo = 0x0C,
    Guid = 0x0F,
    Decimal = 0x10,
};

struct Column
{
    QString name;
    ColumnType type = ColumnType::Text;
    int number = 0;        ///< its bit in a row's mask; may have gaps
    bool fixed = false;    ///< stands at a fixed place of every row
    int fixedOffset = 0;   ///< behind the row's number of columns
    int variableIndex = 0; ///< among the row's values of variable length; may have gaps
    int length = 0;        ///< in bytes
    int scale = 0;         ///< decimal places of a decimal
    bool autoNumber = false;
};

struct Index
{
    struct Key
    {
        QString column;
        bool ascending = true;
    };
    QString name;
    QList<Key> keys;
    bool unique = false;
};

/// What a file tells about one of its tables.
struct TableDefinition
{
    quint32 page = 0;
    qint64 rows = 0; ///< as counted by the program that wrote them
    qint64 lastAutoNumber = 0;
    int columnsEver = 0; ///< with those that were deleted
    bool hasVariable = false;
    RowPointer ownedPages = 0;
    QList<Column> columns; ///< by number
    QList<Index> indexes;  ///< without those that only serve a relation
};

/// Throws Damage.
TableDefinition readDefinition(const Pages &pages, quint32 firstPage);

} // namespace oldfiles
