#pragma once

#include "support/Rows.h"
#include "support/TestForms.h"

namespace support {

/// The window of a class as a person meets it: its controls go by their given names, of whatever kind they
/// are. A name that no control has ends the test.
template <typename Form>
struct Ui
{
    static Form *form() { return openForm<Form>(); }
    template <typename Control = QWidget>
    static Control *find(const char *name)
    {
        return support::find<Form, Control>(name);
    }
    static QString text(const char *name) { return find(name)->property(textOf(name)).toString(); }
    static bool isEnabled(const char *name) { return find(name)->isEnabled(); }
    static bool isVisible(const char *name) { return find(name)->isVisible(); }
    static bool hasFocus(const char *name) { return form()->focusWidget() == find(name); }
    static void press(const char *button) { support::press<Form>(button); }
    static void type(const char *box, const QString &text) { support::type<Form>(box, text); }
    /// Puts a text of any letters into a box at once; keys are for ASCII only.
    static void set(const char *box, const QString &text) { find(box)->setProperty(textOf(box), text); }
    static void key(const char *control, Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        find(control)->setFocus();
        QTest::keyClick(find(control), key, modifiers);
    }
    /// Without the keyboard a window's shortcuts do nothing.
    static void activate()
    {
        form()->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(form()));
    }

    /// The form's list, what a column of it shows once all rows are found, and a row to stand on.
    static QTableView *grid() { return form()->template findChild<QTableView *>(); }
    static QString rows(int column = 0) { return columnOf(*grid()->model(), column); }
    static void standOn(int row, int column = 0)
    {
        grid()->setCurrentIndex(grid()->model()->index(row, column));
    }

private:
    static const char *textOf(const char *name)
    {
        const QMetaObject *control = find(name)->metaObject();
        const auto has = [control](const char *property) { return control->indexOfProperty(property) >= 0; };
        return has("plainText") ? "plainText" : has("currentText") ? "currentText" : "text";
    }
};

/// A key on whatever has the keyboard.
inline void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
{
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
}
/// Letters into whatever has the keyboard: the first may open a cell, whose box then takes the others.
inline void keys(const QString &letters)
{
    for (const QChar letter : letters) {
        QTest::keyClicks(QApplication::focusWidget(), letter);
    }
}

/// Another program that holds a database of the desk until it is told to let go.
class Lock
{
public:
    explicit Lock(const QString &file) : m_database(file) { m_database->Execute(u"begin exclusive"_s); }
    void release() { m_database.reset(); }

private:
    std::optional<store::Database> m_database;
};

} // namespace support
