#include "core/Settings.h"

#include "core/AtomicFile.h"
#include "core/platform.h"

#include <QFile>
#include <QtEndian>

using namespace Qt::StringLiterals;

namespace core {

namespace {

// Goes through the record's fields in the order of the file and reads or writes each of them, so that one
// list of fields serves both.
class RecordReader
{
public:
    explicit RecordReader(const QByteArray &bytes)
        : m_bytes(bytes.leftJustified(SettingsRecord::size, '\0', true))
    {}
    template <int width>
    void operator()(FixedText<width> &field)
    {
        field.setBytes(m_bytes.mid(take(width), width));
    }
    template <typename Integer>
    void operator()(Integer &field)
    {
        field = qFromLittleEndian<Integer>(m_bytes.constData() + take(sizeof(Integer)));
    }

private:
    qsizetype take(qsizetype width) { return std::exchange(m_offset, m_offset + width); }

    QByteArray m_bytes;
    qsizetype m_offset = 0;
};

class RecordWriter
{
public:
    template <int width>
    void operator()(const FixedText<width> &field)
    {
        m_bytes += field.bytes();
    }
    template <typename Integer>
    void operator()(Integer field)
    {
        const Integer ordered = qToLittleEndian(field);
        m_bytes.append(reinterpret_cast<const char *>(&ordered), sizeof(ordered));
    }
    const QByteArray &bytes() const { return m_bytes; }

private:
    QByteArray m_bytes;
};

template <typename Record, typename Visitor>
void visitFields(Record &record, Visitor &visit)
{
    visit(record.reserved);
    visit(record.LastSenderIp);
    visit(record.LastSenderPort);
    visit(record.PopupDetail);
    visit(record.LanguageSetting);
    visit(record.LocalPort);
    visit(record.PopupAllLines);
    visit(record.gridColumnNames);
    visit(record.gridColumnWidths);
    visit(record.gridColumnVisibility);
    visit(record.ListUnpoppedCalls);
}

} // namespace

QByteArray SettingsRecord::toBytes() const
{
    RecordWriter writer;
    visitFields(*this, writer);
    return writer.bytes();
}

SettingsRecord SettingsRecord::fromBytes(const QByteArray &bytes)
{
    SettingsRecord record;
    RecordReader reader(bytes);
    visitFields(record, reader);
    return record;
}

void Settings::Get_misc()
{
    m_read = m_log.trap("Get_misc"_L1, [&] {
        if (!QFile::exists(m_paths.SettingsFile)) {
            platform::appendToFile(m_paths.SettingsFile, {});
        }
        record = SettingsRecord::fromBytes(readBytes(m_paths.SettingsFile, 0, SettingsRecord::size));
    });
}

// A failed write is logged like a failed read: the run log has only ever known one name for both.
bool Settings::SaveMisc()
{
    return m_log.trap("Get_misc"_L1, [&] {
        if (!m_read && QFile::exists(m_paths.SettingsFile)) {
            throw Error(0, u"settings that could not be read are not written over"_s);
        }
        saveAtomically(m_paths.SettingsFile, record.toBytes());
    });
}

void Settings::SetDefaulteMisc_tarn()
{
    setGridDefaults(record);
    SaveMisc();
}

void setGridDefaults(SettingsRecord &record)
{
    record.gridColumnNames.setText(u"Channel,CallerID,SimpleDes,IncomingTime,SN,LineNo,ID"_s);
    record.gridColumnWidths.setText(u"500,1800,2500,2700,500,1500,1500"_s);
    record.gridColumnVisibility.setText(u",1,1,1,1,1,"_s);
}

} // namespace core
