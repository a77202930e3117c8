#pragma once

#include "core/CodePage.h"
#include "core/RunLog.h"

#include <QString>
#include <QVarLengthArray>

#include <array>
#include <optional>

namespace lookup {

/// The most numbers that one text may hold.
constexpr int maxPhoneNumbers = 101;

/// The pieces of a numbers text in its order, from Items[0] to Items[Count - 1]; the other items are empty.
struct PhoneNumberList
{
    qint16 Count = 0;
    std::array<QString, maxPhoneNumbers> Items;
};

/// Cuts a text that an operator typed into its numbers; pieces are never empty and keep their hyphens and
/// brackets. Without `separator` these separate: , : . blank | CR LF and every character that is no single
/// byte of the code page, except the full-width dash and brackets. Empty when the text holds more than 101
/// pieces or 32,767 characters, which is logged.
PhoneNumberList SplitPhoneNumber(core::RunLog &log, const core::CodePage &codePage, QStringView text,
                                 const std::optional<QString> &separator = {});

/// The same pieces as views into `text`, without a copy of any.
template <typename View>
using PiecesOf = QVarLengthArray<View, maxPhoneNumbers>;
using PhoneNumberPieces = PiecesOf<QStringView>;
PhoneNumberPieces phoneNumberPieces(core::RunLog &log, const core::CodePage &codePage, QStringView text,
                                    const std::optional<QString> &separator = {});
/// The same of a text that holds ASCII characters only, as nearly all do.
PiecesOf<QLatin1StringView> phoneNumberPieces(core::RunLog &log, const core::CodePage &codePage,
                                              QLatin1StringView ascii);

} // namespace lookup
