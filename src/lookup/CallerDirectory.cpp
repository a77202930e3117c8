#include "lookup/CallerDirectory.h"

#include "store/Upgrade.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace lookup {

namespace {

constexpr std::chrono::milliseconds atOnce{0};
constexpr std::chrono::milliseconds betweenPieces{8}; // as long as a piece: the operator works meanwhile
constexpr std::chrono::seconds betweenLooks{2};

} // namespace

CallerDirectory::CallerDirectory(const core::Paths &paths, core::RunLog &log, const core::CodePage &codePage)
    : m_paths(paths), m_log(log), m_index(paths, log, codePage)
{
    m_next.setSingleShot(true);
    connect(&m_next, &QTimer::timeout, this, &CallerDirectory::turn);
}

void CallerDirectory::load()
{
    m_state = store::stateOf(m_paths.CustomerFile);
    if (QFileInfo(m_paths.CustomerFile).isFile()) {
        m_index.LoadPhoneNumberSNArray();
        readCustomers();
    } else {
        setAvailable(false);
    }
    goOn();
}

void CallerDirectory::fixCustomers()
{
    const qint32 fixed = store::FixCustomerData(m_log, m_paths);
    m_isFixed = fixed != 0;
    m_hasMoreToFix = fixed == store::moreToFix;
    if (!m_isFixed && store::isLocked(m_paths.CustomerFile)) {
        m_state.reset();
    }
}

void CallerDirectory::addCallNoteTables()
{
    store::UpdateDatabase_Customer_0606191111(m_log, m_paths);
}

void CallerDirectory::turn()
{
    if (m_index.isLoading()) {
        goOn(m_index.continueLoading());
    } else if (m_hasMoreToFix) {
        fixCustomers();
        m_next.start(betweenPieces);
    } else {
        look();
    }
}

// Looking at the state first keeps the log quiet: while another program has locked the file, every attempt to
// read it would log a failure.
void CallerDirectory::look()
{
    if (m_index.isLoading()) {
        return;
    }
    const std::optional<QByteArray> state = store::stateOf(m_paths.CustomerFile);
    if (state && state != m_state) {
        m_state = state;
        if (!m_isFixed) {
            fixCustomers();
            addCallNoteTables();
            m_state = m_state ? store::stateOf(m_paths.CustomerFile) : m_state;
        }
        readCustomers();
    }
    reloadPhoneBook();
    goOn();
}

void CallerDirectory::readCustomers()
{
    m_readsCustomers = true;
    m_index.LoadCustomerPhoneNumberSnArray();
}

// Needed only if the phone book could not be read at the start, because another program had locked it or
// because there were no customers yet.
void CallerDirectory::reloadPhoneBook()
{
    const std::optional<core::Error> &failure = m_index.phoneBookFailure();
    const bool untried = !failure && !m_index.knowsPhoneBook() && areKnown();
    const bool wasLocked = failure && store::tellsOfLock(*failure);
    if ((untried || wasLocked) && !store::isLocked(m_paths.PhoneBookFile)) {
        m_index.LoadPhoneNumberSNArray();
    }
}

void CallerDirectory::customerSaved(qint32 sn, const CustomerFacts &onFile)
{
    follow(m_index.updateCustomer(sn, onFile));
}

void CallerDirectory::customerDeleted(qint32 sn)
{
    follow(m_index.updateCustomer(sn, {}));
}

// Where only a rebuild takes the save over, another desk may have locked the file. Nothing waits for it:
// until it can be read, calls are told by what was known before, and the status line says so. Otherwise the
// rows are read again only if somebody else has saved, too.
void CallerDirectory::follow(bool taken)
{
    if (!taken) {
        m_state.reset();
        setAvailable(false);
    }
    m_next.start(atOnce);
}

void CallerDirectory::goOn(bool read)
{
    const bool reading = read && m_index.isLoading();
    const bool first = reading && !areKnown();
    if (std::exchange(m_isLoading, first) != first) {
        Q_EMIT loading(first);
    }
    if (!m_index.isLoading() && std::exchange(m_readsCustomers, false)) {
        customersEnded();
    }
    m_next.start(first ? atOnce : reading ? betweenPieces : std::chrono::milliseconds(betweenLooks));
}

// Customers without a single number count as read.
void CallerDirectory::customersEnded()
{
    const std::optional<core::Error> &failure = m_index.customersFailure();
    if (failure && store::tellsOfLock(*failure)) {
        m_state.reset();
        setAvailable(m_available && areKnown());
        return;
    }
    setAvailable(!failure || failure->kind() == core::Error::Kind::Empty);
    if (m_index.hasUnflagged() && m_isFixed) {
        fixCustomers();
    }
    Q_EMIT customersRead();
}

void CallerDirectory::setAvailable(bool available)
{
    if (std::exchange(m_available, available) != available) {
        Q_EMIT availableChanged(available);
    }
}

bool CallerDirectory::callerPopsUp(QStringView number, QStringView otherNumber) const
{
    for (const QStringView candidate : {number, otherNumber}) {
        const auto sn = candidate.isEmpty() ? std::nullopt : m_index.FindCustomerSnOfCaller(candidate);
        if (sn) {
            const std::optional<KnownCustomer> customer = m_index.customer(*sn);
            return customer && customer->popsUp;
        }
    }
    return false;
}

QString CallerDirectory::customerName(qint32 sn) const
{
    const std::optional<KnownCustomer> customer = m_index.customer(sn);
    return customer ? customer->name.toString() : QString();
}

void CallerDirectory::completeFromDesk(core::CallRecord &record) const
{
    if (record.CallerID.isEmpty()) {
        return;
    }
    const std::optional<qint32> sn = m_index.FindCustomerSnOfCaller(record.CallerID);
    if (!sn) {
        return;
    }
    const core::RowKey row{.table = core::RowKey::Table::Customer, .sn = *sn};
    const bool agrees = record.Source.isEmpty() || core::rowKeyOf(record) == row;
    const std::optional<KnownCustomer> customer = agrees ? m_index.customer(*sn) : std::nullopt;
    if (!customer) {
        return;
    }
    const auto fill = [](QString &field, auto text) { field = field.isEmpty() ? text() : field; };
    record.SN = row.sn;
    fill(record.SnText, [&] { return QString::number(row.sn); });
    record.Source = core::sourceOf(row.table);
    fill(record.SimpleDes, [&] { return customer->name.toString().trimmed(); });
    fill(record.SimpleDes, [&] { return record.CallerID; });
    fill(record.DetailDes, [&] { return customer->note.toString(); });
    fill(record.IfVIP, [&] { return customer->vip ? u"Y"_s : QString(); });
    fill(record.IfInBlackList, [&] { return customer->blackListed ? u"Y"_s : QString(); });
}

} // namespace lookup
