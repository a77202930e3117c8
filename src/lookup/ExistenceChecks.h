#pragma once

#include "core/Navigator.h"
#include "core/Prompts.h"
#include "core/TextLookup.h"
#include "lookup/NumberIndex.h"

#include <functional>
#include <optional>

namespace lookup {

/// The row on file that holds a number or name that was typed.
struct Owner
{
    core::RowKey row;
    QString name = {};
    QString number = {}; ///< as it was typed; empty where it is the name that is on file

    bool operator==(const Owner &) const = default;
};

/// The answer of a look-up in a file, which may fail.
struct OwnerAnswer
{
    bool isAnswered = false; ///< false: the file could not be read
    std::optional<Owner> owner = {};
};

/// The checks that keep one caller from being filed twice.
class ExistenceChecks
{
public:
    using Table = core::RowKey::Table;

    struct Context
    {
        const core::Paths &paths;
        core::RunLog &log;
        NumberIndex &index;
        const core::TextLookup &texts;
        core::Prompts &prompts;
        core::Navigator &navigator;
    };
    /// All must outlive the checks.
    explicit ExistenceChecks(const Context &context) : m_context(context) {}

    /// Who holds the first of the numbers in the text that is on file in the table right now, the row
    /// `edited` left out, which an editor shows. A piece without a digit is nobody's. Never waits: while the
    /// numbers or the owner's row cannot be read, nobody is known.
    std::optional<Owner> ownerOfNumbers(Table table, const QString &numbers,
                                        std::optional<qint32> edited) const;
    /// The same by the number index alone, which has the phone book as it was at the start. The name is empty
    /// if the row does not hold the number any more.
    std::optional<Owner> indexedOwner(Table table, const QString &numbers) const;
    /// The first customer but `edited` whose name contains `name`, where * ? # [ are wildcards.
    OwnerAnswer customerNamed(const QString &name, std::optional<qint32> edited) const;

    /// "555-0144 belongs to Acme.", or that a name is on file.
    QString text(const Owner &owner) const;
    /// Opens the editor on the owner.
    void open(const Owner &owner) const;
    /// Tells in front of the editor that its number or name is on file, and whose it is if he has a name. For
    /// a number, the list then shows him, behind the editor.
    void tell(const Owner &owner, QWidget *editor) const;

    /// When one of the numbers in the text is on file: tells so and returns "". "NO" when nothing is found;
    /// empty for empty input and after a failure. They do not leave out a row that is being edited.
    QString IfNumbersExistInSimplePhoneBook(const QString &numbers, QWidget *editor) const;
    QString IfThePhoneNumberExistInCustomer(const QString &numbers, QWidget *editor) const;

    /// The query that lists the customers whose name contains `name`; "NO" and empty as above. `visit` is
    /// shown each of them until it returns false.
    QString IfTheCustumerExist(const QString &name,
                               const std::function<bool(const store::Recordset &)> &visit = {}) const;

private:
    std::optional<Owner>
    firstOwner(const QString &numbers,
               const std::function<std::optional<Owner>(const QString &digits)> &ownerOf) const;
    QString check(Table table, const QString &numbers, QWidget *editor) const;
    std::optional<QString> nameOfHolder(core::RowKey row, const QString &digits) const;

    Context m_context;
};

} // namespace lookup
