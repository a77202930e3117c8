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
    enum class Table : quint8 { PhoneBook, Customer };
    Table table = Table::Customer;
    qint32 sn = 0;
    QString name = {};
    QString number = {}; ///< as it was typed; empty where it is the name that is on file

    bool operator==(const Owner &) const = default;
};

/// What a look-up in a file says, which may fail.
struct OwnerAnswer
{
    bool isAnswered = false; ///< false: the file could not be read
    std::optional<Owner> owner = {};
};

/// The checks that keep one caller from being filed twice.
class ExistenceChecks
{
public:
    struct Needs
    {
        const core::Paths &paths;
        core::RunLog &log;
        NumberIndex &index;
        const core::TextLookup &texts;
        core::Prompts &prompts;
        core::Navigator &navigator;
    };
    /// All must outlive the checks.
    explicit ExistenceChecks(const Needs &needs) : m_needs(needs) {}

    /// Who holds the first of the numbers in the text that is on file in the table right now, the row
    /// `edited` left out, which an editor shows. A piece without a digit is nobody's. Never waits: while the
    /// numbers or the owner's row cannot be read, nobody is known.
    std::optional<Owner> ownerOfNumbers(Owner::Table table, const QString &numbers,
                                        std::optional<qint32> edited) const;
    /// Who holds it by the number index, which has the phone book as it was at the start. His name is empty
    /// where that is not true any more.
    std::optional<Owner> indexedOwner(Owner::Table table, const QString &numbers) const;
    /// The first customer but `edited` whose name contains `name`, where * ? # [ are wildcards.
    OwnerAnswer customerNamed(const QString &name, std::optional<qint32> edited) const;

    /// "555-0144 belongs to Acme.", or that a name is on file.
    QString text(const Owner &owner) const;
    /// Opens the editor on the owner.
    void open(const Owner &owner) const;
    /// Tells in front of the editor that its number or name is on file, and, where he has one, the name of
    /// the owner; of a number the list then shows him, behind the editor.
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
    firstOwner(Owner::Table table, const QString &numbers,
               const std::function<std::optional<Owner>(const QString &digits)> &ownerOf) const;
    QString check(Owner::Table table, const QString &numbers, QWidget *editor) const;
    std::optional<QString> nameOfHolder(Owner::Table table, qint32 sn, const QString &digits) const;

    const Needs m_needs;
};

} // namespace lookup
