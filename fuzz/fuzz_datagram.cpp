#include "Support.h"
#include "core/TextUtilities.h"
#include "reception/Columns.h"
#include "reception/Dispatcher.h"

#include <QTemporaryDir>

#include <cstdint>
#include <deque>

using namespace Qt::StringLiterals;

namespace {

/// Whatever arrives must be one entry, that is one line.
class OneLineBox : public core::RunInfoBox
{
public:
    void clear() override { m_length = 0; }
    qsizetype length() const override { return m_length; }
    void append(const QString &line) override
    {
        require(line.indexOf(u'\n') == line.size() - 1 && line.indexOf(u'\r') == line.size() - 2);
        m_length += line.size();
    }

private:
    qsizetype m_length = 0;
};

/// Causes nothing, and checks what would be shown.
class CheckedEffects : public reception::CallEffects, public core::Callers
{
public:
    bool areKnown() const override { return false; }
    bool callerPopsUp(QStringView number, QStringView) const override { return number.size() % 2 == 0; }
    void completeFromDesk(core::CallRecord &) const override {}
    void setMainWindowNormal() override {}
    void showMainWindow() override {}
    void ShowCallerID_tarn(const core::CallRecord &record) override
    {
        // A pair that begins in the column before a field belongs to the field.
        require(record.IncomingTime.size() <= 19 && record.Channel.size() <= 8 && record.LineNo.size() <= 29);
        require(record.CallerID.size() <= 31 && record.SimpleDes.size() <= 31 && record.Tail.size() <= 40);
        require(record.SN >= 0 && core::MyIn(record.Source, QString(), u"PHONEBOOK"_s, u"CUSTOMER"_s));
    }
    void showEarlierCall(const core::CallRecord &, int) override {}
    void showCallAgain(const core::CallRecord &, const core::CallRecord &) override {}
    void showLastCaller() override {}
    void ShowPopup(const core::CallRecord &) override {}
    void ShowSmallMessage(const QString &) override {}
    bool byebye(const QString &prompt) override { return prompt == "No"_L1; }
};

/// One program for each kind of code page, all with the same files in a temporary folder. The length of the
/// input chooses, so that an input always meets the same one.
class Desk
{
public:
    Desk()
    {
        m_values.MainWindowReady = true;
        m_log.setRunInfoBox(&m_box);
        m_settings.record.ListUnpoppedCalls = 1;
        for (const int number : {936, 950, 932, 949, 1252, 1255, 1258}) {
            m_programs.emplace_back(*this, number);
        }
    }

    void receive(const QByteArray &bytes)
    {
        Program &program = m_programs.at(static_cast<size_t>(bytes.size()) % m_programs.size());
        checkColumns(program.codePage, bytes);
        program.dispatcher.Winsock1_DataArrival({bytes, QHostAddress(QHostAddress::LocalHost), 1971});
        checkLastCaller(program.dispatcher.lastCall());
        for (const QString &line : program.dispatcher.describeLast().split(u'\n')) {
            require(core::shownText(line, line.size()) == line);
        }
    }

private:
    struct Program
    {
        Program(Desk &desk, int number)
            : codePage(number),
              dispatcher(desk.m_settings, desk.m_log, desk.m_values, codePage, desk.m_effects, desk.m_effects)
        {}
        core::CodePage codePage;
        reception::Dispatcher dispatcher;
    };

    // Neither the parsers that nothing but a description asks, nor the way back to bytes, may fail.
    static void checkColumns(const core::CodePage &codePage, const QByteArray &bytes)
    {
        const core::DatagramText datagram = codePage.decode(bytes);
        const qsizetype columns = reception::ByteColumns(datagram.text, datagram.columns);
        require(columns == bytes.size() ||
                (columns < bytes.size() && datagram.text == QString::fromUtf8(bytes)));
        require(reception::MidByCols(datagram.text, 1, columns, datagram.columns) == datagram.text);
        reception::parseShortCid(datagram);
        reception::parseDetail(datagram);
        codePage.encode(datagram.text);
    }

    static void checkLastCaller(const core::CallRecord &record)
    {
        const QString text = reception::lastCallerText(record, record.CallerID);
        require(text.count(u'\n') == 1 && text.size() < 200);
        require(core::shownText(text.section(u"\r\n"_s, 0, 0)) == text.section(u"\r\n"_s, 0, 0));
    }

    QTemporaryDir m_folder;
    core::Paths m_paths = core::pathsBelow(m_folder.path(), m_folder.path());
    FixedClock m_clock;
    core::ProcessValues m_values;
    OneLineBox m_box;
    core::RunLog m_log{m_paths, m_clock, m_values};
    core::Settings m_settings{m_paths, m_log};
    CheckedEffects m_effects;
    std::deque<Program> m_programs; // never moves its elements, which refer to themselves
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static Desk desk; // the fuzzer offers no other place that lasts from input to input
    desk.receive(QByteArray(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)));
    return 0;
}
