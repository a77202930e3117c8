#pragma once

#include "core/CodePage.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <optional>

namespace sim {

/// The code page a sender writes in, and with it the byte columns that a character takes in a fixed-column
/// record.
class CodePageChoice
{
public:
    /// UTF-8: one column for a character below code 255, two for any other.
    CodePageChoice() = default;
    /// A Windows code page number; a character takes as many columns as it has bytes.
    explicit CodePageChoice(int number) : m_ansi(std::make_shared<core::CodePage>(number)) {}
    /// "utf-8" or a known code page number such as "936".
    static std::optional<CodePageChoice> named(QStringView name);

    /// Characters that the code page lacks become "?".
    QByteArray encode(QStringView text) const;
    QString decode(QByteArrayView bytes) const;
    qsizetype columns(QStringView text) const;

private:
    std::shared_ptr<const core::CodePage>
        m_ansi; // none: UTF-8; shared because one costs 128 conversions to make
};

/// The fields of a caller-ID record (docs/formats.md); each is padded to its columns, or cut to them.
struct CallFields
{
    QString channel;
    QString time; ///< "YYYY-MM-DD HH:MM:SS"
    QString line;
    QString number;
    QString name;
    QString match; ///< "SPB12" for phone book entry 12, "12" for customer 12
    QString ip;
    QString blackList; ///< "Y" marks
    QString vip;       ///< "Y" marks
    QString tailTime;  ///< "YYYY-MM-DD HH:MM"; the three tail fields tell of this caller's previous call
    QString tailExt;
    QString tailTel;
    std::optional<QString> rawCid; ///< either of these two adds both parameter blocks
    std::optional<QString> detail;
};

/// Parameter blocks stand in column 204, or in 243 when one of the tail fields is given.
QByteArray callRecord(const CallFields &fields, const CodePageChoice &codePage);

/// The short "CID" record: number and name only.
QByteArray cidRecord(const CallFields &fields, const CodePageChoice &codePage);

/// The record that carries a long description of the caller: `detail`, from column 144 on, and one blank.
QByteArray detailRecord(const CallFields &fields, const CodePageChoice &codePage);

/// "SHUTDOWNALL", or "CHANNELSTATUS" with its report.
QByteArray commandRecord(QStringView command, QStringView argument, const CodePageChoice &codePage);

/// "SENDSMALLMESSAGE". Its fields are counted in characters, so the text begins with character 204.
QByteArray messageRecord(QStringView sendTo, QStringView text, const CodePageChoice &codePage);

} // namespace sim
