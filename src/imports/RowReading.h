#pragma once

#include "imports/ListFile.h"
#include "imports/ListTarget.h"

namespace imports {

/// What becomes of a row that is on file already. A blank cell changes nothing.
enum class OnFile : quint8 { Stays, FilledIn, Overwritten };

/// How a list is imported, as the operator has chosen.
struct ListPlan
{
    ListForm form = {};
    bool hasHeadings = true;
    QList<int> fieldOfColumn = {}; ///< a field of the target for each column; -1: not imported
    int fixedField = -1;           ///< has the same text in every row; -1: none
    QString fixedText = {};
    RowKey identify = RowKey::Nothing;
    OnFile onFile = OnFile::Stays;
};

enum class Refusal : quint8 {
    Characters,
    Unclosed,
    Columns,
    NoName,
    NoNumber,
    TooLong, ///< for the field
    NoFlag,  ///< neither yes nor no, in the field
    Repeats, ///< the other row
    IdTaken
};

struct RefusedRow
{
    qint64 row = 0;
    Refusal why = Refusal::Characters;
    int field = -1;
    qint64 otherRow = 0;

    bool operator==(const RefusedRow &) const = default;
};

/// What the fields get of a row: a text each, empty where the row says nothing.
struct ReadRow
{
    QStringList texts = {};
    std::optional<RefusedRow> refused = {};
};

/// Makes of a foreign row what the fields of a target are to hold.
class RowReading
{
public:
    /// The target must outlive it.
    RowReading(const ListTarget &target, const ListPlan &plan);
    ReadRow read(const SourceRow &row) const;

private:
    std::optional<RefusedRow> add(int field, const QString &cell, QString &text) const;

    const ListTarget &m_target;
    ListPlan m_plan;
};

/// Phone numbers as they are filed: parted by commas, in digits that a call may have, and without the blanks
/// and dots inside of a number, at which a desk would part it.
QString numbersOf(const QString &cell);
/// The digits of each number of a text as some desk has filed it.
QStringList digitsOf(const QString &numbers);

} // namespace imports
