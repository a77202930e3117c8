#pragma once

#include "core/Clock.h"
#include "core/Navigator.h"
#include "core/Prompts.h"

#include <QList>
#include <QSet>
#include <QStringList>

#include <functional>

namespace support {

/// A clock that stands until it is told to move.
class FakeClock : public core::Clock
{
public:
    QDateTime time = QDateTime(QDate(2026, 11, 21), QTime(9, 30, 15));
    QDateTime now() const override { return time; }
};

/// Answers from a script and records what was asked. A prompt that no test announced fails the test, and so does an
/// announced one that never came.
class FakePrompts : public core::Prompts
{
public:
    FakePrompts() = default;
    ~FakePrompts() override;
    Q_DISABLE_COPY_MOVE(FakePrompts)

    /// Announces one prompt: its answer (for `tell` it is ignored) and what happens while it is open.
    void expect(bool answer = true, std::function<void()> whileOpen = {});

    void tell(const QString &text) override;
    bool askOkCancel(const QString &text, const QString &title) override;
    bool isOpen() const override { return m_open > 0; }

    QStringList asked; ///< the texts, in order

private:
    struct Answer
    {
        bool ok = true;
        std::function<void()> whileOpen;
    };
    bool answer(const QString &text);

    QList<Answer> m_script;
    int m_open = 0;
};

/// Records which windows were asked for; shows none.
class FakeNavigator : public core::Navigator
{
public:
    QSet<core::Window> available; ///< what canShow answers
    QStringList shown;            ///< one line a call, such as "Show_Editor CUSTOMER 7"

    bool canShow(core::Window window) const override { return available.contains(window); }
    void show(core::Window window) override;
    void ShowHelp(const QString &helpId) override;
    void Show_Editor(const QString &source, qint32 sn) override;
    void showPhoneBook(const QString &query) override;
    void showCustomerList(const QString &query) override;
    void addCaller(const QString &number, const QString &keyWord) override;
};

} // namespace support
