#pragma once

#include "core/Paths.h"
#include "core/RunLog.h"
#include "core/TextUtilities.h"

#include <QByteArray>
#include <QString>

#include <algorithm>

namespace core {

/// A fixed-width single-byte text of the settings record, kept byte for byte. Never written: all NUL.
template <int width>
class FixedText
{
public:
    /// The text without NULs and surrounding blanks: unset reads as "".
    QString text() const { return TrimNulls(QString::fromLatin1(m_bytes)); }
    /// Fills from the left and pads with blanks; what is too long is cut.
    void setText(const QString &text) { m_bytes = text.toLatin1().leftJustified(width, ' ', true); }
    bool isUnset() const { return m_bytes.at(0) == '\0'; }

    const QByteArray &bytes() const { return m_bytes; }
    void setBytes(const QByteArray &bytes) { m_bytes = bytes.leftJustified(width, '\0', true); }

private:
    QByteArray m_bytes = QByteArray(width, '\0');
};

/// The settings record: 334 bytes on disk, little-endian, no header (docs/formats.md has the table).
struct SettingsRecord
{
    static constexpr int size = 334;

    FixedText<100> reserved; ///< carried unchanged
    FixedText<50> LastSenderIp;
    qint32 LastSenderPort = 0;
    qint16 PopupDetail = 0; ///< 1: the popup also shows ordinary callers
    FixedText<50> LanguageSetting;
    qint32 LocalPort = 0;     ///< 0 means 1972
    qint16 PopupAllLines = 0; ///< 1: every caller-ID record pops up; other: the popup filter decides
    FixedText<60> gridColumnNames;
    FixedText<40> gridColumnWidths; ///< twips, in the order of the names
    FixedText<20> gridColumnVisibility;
    qint16 ListUnpoppedCalls = 0; ///< non-zero: list calls that open no popup

    QByteArray toBytes() const;
    /// Missing bytes read as NUL, further ones are ignored.
    static SettingsRecord fromBytes(const QByteArray &bytes);
};

/// Sets the three grid fields to the columns as delivered.
void setGridDefaults(SettingsRecord &record);

/// The settings of the whole run and their file "Crm.cfg".
class Settings
{
public:
    Settings(const Paths &paths, RunLog &log) : m_paths(paths), m_log(log) {}

    SettingsRecord record;

    /// Reads the record; a missing file is created empty. On an error the record keeps what it held.
    void Get_misc();
    /// Writes the whole record at once; false, and logged, when the disk refused. A file that could not be
    /// read is never written over.
    bool SaveMisc();
    /// Sets the three grid fields to their defaults and saves.
    void SetDefaulteMisc_tarn();

private:
    const Paths &m_paths;
    RunLog &m_log;
    bool m_read = true; ///< false once reading failed
};

} // namespace core
