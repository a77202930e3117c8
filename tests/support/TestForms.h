#pragma once

#include "appearance/FormSetup.h"
#include "core/OpenForms.h"
#include "core/Settings.h"
#include "core/WindowMemory.h"
#include "language/FormTranslator.h"
#include "support/TestDesk.h"

#include <QHash>

namespace support {

/// Answers "[key]" for every key, so that a test sees both that a text was looked up and which.
class KeyTexts : public core::TextLookup
{
public:
    QString Lms(const QString &key) const override { return u'[' + key + u']'; }
};

/// What forms need besides a desk.
class TestForms
{
public:
    TestDesk desk;
    FakePrompts prompts;
    FakeNavigator navigator;
    KeyTexts texts;
    core::Settings settings{desk.paths, desk.log};
    core::OpenForms openForms{desk.log};
    core::WindowMemory windows{desk.paths, desk.log};
    language::LanguageState language{QStringLiteral("ENG"), {}, {}, {}};
    language::FormTranslator translator{texts, language, desk.log};

    appearance::FormServices services() { return {translator, openForms, windows}; }
};

} // namespace support
