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

void FakePrompts::expect(bool answer, std::function<void()> whileOpen)
{
    m_script.append({answer, std::move(whileOpen)});
}

void FakePrompts::tell(const QString &text)
{
    answer(text);
}

bool FakePrompts::askOkCancel(const QString &text, const QString &)
{
    return answer(text);
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

void FakeNavigator::show(core::Window window)
{
    shown.append(u"show "_s + QString::number(int(window)));
}

void FakeNavigator::ShowHelp(const QString &helpId)
{
    shown.append(u"ShowHelp "_s + helpId);
}

void FakeNavigator::Show_Editor(const QString &source, qint32 sn)
{
    shown.append(u"Show_Editor "_s + source + u' ' + QString::number(sn));
}

void FakeNavigator::showPhoneBook(const QString &query)
{
    shown.append(u"showPhoneBook "_s + query);
}

void FakeNavigator::showCustomerList(const QString &query)
{
    shown.append(u"showCustomerList "_s + query);
}

void FakeNavigator::addCaller(const QString &number, const QString &keyWord)
{
    shown.append(u"addCaller "_s + number + u' ' + keyWord);
}

} // namespace support
