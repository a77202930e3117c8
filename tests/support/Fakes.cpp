#include "support/Fakes.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace support {

FakePrompts::~FakePrompts()
{
    if (!m_script.isEmpty()) {
        QTest::qFail("an announced prompt never came", __FILE__, __LINE__);
    }
}

bool FakePrompts::answer(const QString &text)
{
    asked.append(text);
    if (m_script.isEmpty()) {
        QTest::qFail(qPrintable(u"nobody announced this prompt: "_s + text), __FILE__, __LINE__);
        return false;
    }
    const Answer scripted = m_script.takeFirst();
    ++m_open;
    if (scripted.whileOpen) {
        scripted.whileOpen();
    }
    --m_open;
    notifyClosed();
    return scripted.ok;
}

} // namespace support
