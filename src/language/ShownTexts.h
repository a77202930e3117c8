#pragma once

#include "core/TextLookup.h"

#include <QHash>

namespace language {

class LanguagePack;

/// The English text of a key as the program was built with it, in any letter case; empty for an unknown key.
QString builtInText(const QString &key);

/// The text sources that the program was built with: in the folder a folder for each language.
QString builtInTextsFolder();

/// The texts of a language as the program was built with them, where English stands in: for what is shown
/// before a language file is read.
class BuiltInTexts : public core::TextLookup
{
public:
    explicit BuiltInTexts(const QString &code);
    QString Lms(const QString &key) const override;

private:
    QHash<QString, QString> m_texts; ///< by upper-cased key
};

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
