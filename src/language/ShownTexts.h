#pragma once

#include "core/TextLookup.h"

namespace language {

class LanguagePack;

/// The English text of a key as the program was built with it, in any letter case; empty for an unknown key.
QString builtInText(const QString &key);

/// The texts that windows and message boxes show: no key that the program knows is ever without one. Where
/// the language pack has none, since its file is locked, damaged or older than the program, the system's
/// language or English stands in.
class ShownTexts : public core::TextLookup
{
public:
    /// The pack must outlive it.
    explicit ShownTexts(const LanguagePack &pack) : m_pack(pack) {}

    QString Lms(const QString &key) const override;

private:
    const LanguagePack &m_pack;
};

} // namespace language
