#pragma once

#include "core/Navigator.h"
#include "core/Prompts.h"
#include "core/TextLookup.h"
#include "lookup/NumberIndex.h"

namespace lookup {

/// The checks that keep one caller from being filed twice. Their answers: "NO" when nothing is found, empty
/// for empty input and after a failure. They do not leave out a row that is being edited.
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

    /// When one of the numbers in the text is on file: tells so, opens the list on its owner, and returns "".
    QString IfNumbersExistInSimplePhoneBook(const QString &numbers) const;
    QString IfThePhoneNumberExistInCustomer(const QString &numbers) const;

    /// The query that lists the customers whose name contains `name`, where * ? # [ are wildcards.
    QString IfTheCustumerExist(const QString &name) const;

private:
    using Lookup = qint32 (NumberIndex::*)(QStringView);
    using Show = void (core::Navigator::*)(const QString &);
    QString check(const QString &numbers, Lookup lookUp, const QString &query, Show show) const;
    struct Found
    {
        qint32 sn = -1;
        QString number; ///< as it was typed
    };
    Found firstOwner(const QString &numbers, Lookup lookUp) const;

    const Needs m_needs;
};

} // namespace lookup
