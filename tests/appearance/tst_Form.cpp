#include "appearance/FieldLeft.h"
#include "appearance/OneWindow.h"
#include "appearance/SaveRecord.h"
#include "support/TestForms.h"

namespace {

/// A form with a box, a check box, a button, the default one, and a default one that is not in sight.
struct Window : appearance::Form
{
    explicit Window(support::TestForms &forms) : Form(forms.services())
    {
        setObjectName(u"Window"_s);
        auto *layout = new QVBoxLayout(this);
        for (QWidget *control : QWidgetList{hidden, box, check, other, standard}) {
            layout->addWidget(control);
        }
        hidden->hide();
        hidden->setDefault(true);
        standard->setDefault(true);
        connect(hidden, &QPushButton::clicked, this, [this] { pressed += u"hidden"_s; });
        connect(other, &QPushButton::clicked, this, [this] { pressed += u"other"_s; });
        connect(standard, &QPushButton::clicked, this, [this] { pressed += u"standard"_s; });
        load();
        show();
        activateWindow();
    }
    bool mayClose() override
    {
        ++asked;
        return mayGo;
    }

    QPushButton *hidden = new QPushButton;
    QLineEdit *box = new QLineEdit;
    QCheckBox *check = new QCheckBox;
    QPushButton *other = new QPushButton;
    QPushButton *standard = new QPushButton;
    QString pressed;
    int asked = 0;
    bool mayGo = true;
};

} // namespace

/// The frame that all windows but the main one have in common.
class tst_Form : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void escAsksWhetherItMayCloseAndAClosedOneIsMadeAnew()
    {
        support::TestForms forms;
        appearance::OneWindow<Window> window([&forms] { return new Window(forms); });
        QVERIFY(window.ifOpen() == nullptr);
        QPointer<Window> first = &window.get();
        QCOMPARE(&window.get(), first);
        first->mayGo = false;
        QTest::keyClick(first->box, Qt::Key_Escape);
        QCOMPARE(first->asked, 1);
        QVERIFY(first->isVisible() && window.ifOpen() == first);
        QVERIFY(forms.windows.geometry(u"Window"_s).isEmpty());
        first->mayGo = true;
        QTest::keyClick(first->box, Qt::Key_Escape);
        QVERIFY(!first->isVisible() && window.ifOpen() == nullptr);
        QVERIFY(!forms.windows.geometry(u"Window"_s).isEmpty());
        QVERIFY(&window.get() != first && window.ifOpen() != nullptr); // Qt has yet to delete the first
        QTRY_VERIFY(first.isNull());
        QCOMPARE(forms.openForms.count(), 1);
    }

    void enterPressesTheButtonWithTheKeyboardOrElseTheDefaultInSight()
    {
        support::TestForms forms;
        Window window(forms);
        window.setAttribute(Qt::WA_DeleteOnClose, false);
        QVERIFY(QTest::qWaitForWindowActive(&window));
        for (const auto &[control, modifier, pressed] :
             {std::tuple<QWidget *, Qt::KeyboardModifier, QString>(window.box, {}, u"standard"_s),
              {window.box, Qt::KeypadModifier, u"standard"_s},
              {window.box, Qt::ControlModifier, QString()}, // another command's
              {window.check, {}, u"standard"_s},
              {window.other, {}, u"other"_s}}) {
            window.pressed.clear();
            control->setFocus();
            QTest::keyClick(control, Qt::Key_Return, modifier);
            QCOMPARE(window.pressed, pressed);
        }
        QVERIFY(!window.check->isChecked());
    }

    // An open combo box that loses the keyboard takes the text of its list.
    void aFormThatIsDeletedHearsNothingOfItsControlsAnyMore()
    {
        support::TestForms forms;
        auto window = std::make_unique<Window>(forms);
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
        auto *combo = new QComboBox(window.get());
        combo->setEditable(true);
        combo->addItem(u"Acme"_s);
        combo->show();
        combo->setFocus();
        int heard = 0;
        connect(combo, &QComboBox::currentTextChanged, window.get(), [&heard] { ++heard; });
        combo->setEditText(u"ACME"_s);
        QCOMPARE(heard, 1);
        window.reset();
        QCOMPARE(heard, 1);
    }

    void whatIsUnsavedGoesOnlyAsTheOperatorSays()
    {
        using Answer = core::Prompts::Answer;
        support::TestForms forms;
        Window window(forms);
        bool saves = false;
        const auto settled = [&](Answer answer) {
            forms.prompts.expectSave(answer);
            return appearance::settleUnsaved(
                forms.context(), window,
                {.name = u"Acme"_s, .question = u"Keep?"_s, .save = [&] { return saves; }});
        };
        window.showMinimized();
        QVERIFY(!settled(Answer::Cancel));
        QVERIFY(!window.isMinimized()); // what is asked about is seen
        QCOMPARE(forms.prompts.asked.last(), u"Acme\n\n[Keep?]"_s);
        QVERIFY(settled(Answer::Discard));
        QVERIFY(!settled(Answer::Save));
        saves = true;
        QVERIFY(settled(Answer::Save));
    }

    void aFieldIsLeftForAnotherControlOnly()
    {
        support::TestForms forms;
        Window window(forms);
        window.setAttribute(Qt::WA_DeleteOnClose, false);
        QVERIFY(QTest::qWaitForWindowActive(&window));
        int left = 0;
        appearance::onLeft(*window.box, window, [&left] { ++left; });
        window.box->setFocus();
        for (const Qt::FocusReason reason : {Qt::PopupFocusReason, Qt::ActiveWindowFocusReason}) {
            QFocusEvent event(QEvent::FocusOut, reason);
            QApplication::sendEvent(window.box, &event);
        }
        QCoreApplication::processEvents();
        QCOMPARE(left, 0);
        window.other->setFocus();
        QTRY_COMPARE(left, 1);
    }
};

QTEST_MAIN(tst_Form)
#include "tst_Form.moc"
