#include "appearance/MemoBox.h"
#include "support/Row.h"
#include "support/TestForms.h"

#include <QClipboard>
#include <QInputMethodEvent>
#include <QRandomGenerator>
#include <QTextBlock>
#include <QTextBoundaryFinder>

using appearance::MemoBox;

/// The boxes of several lines, with lines of any length.
class tst_MemoBox : public QObject
{
    Q_OBJECT

    static bool hasLongBlock(const MemoBox &box)
    {
        for (QTextBlock block = box.document()->begin(); block.isValid(); block = block.next()) {
            if (block.length() - 1 > MemoBox::longestBlock) {
                return true;
            }
        }
        return false;
    }

    /// No character of the line stands in two blocks, and no block is long.
    static bool isWhole(const MemoBox &box, const QString &line)
    {
        QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, line);
        qsizetype place = 0;
        for (QTextBlock block = box.document()->begin(); block.isValid(); block = block.next()) {
            finder.setPosition(place);
            if (!line.isEmpty() && !finder.isAtBoundary()) {
                return false;
            }
            place += block.length() - 1;
        }
        return place == line.size() && !hasLongBlock(box);
    }

    static void select(MemoBox &box, int from, int to)
    {
        QTextCursor cursor = box.textCursor();
        cursor.setPosition(from);
        cursor.setPosition(to, QTextCursor::KeepAnchor);
        box.setTextCursor(cursor);
    }

    /// What a person would paste elsewhere.
    static QString copied(MemoBox &box, int from, int to)
    {
        select(box, from, to);
        QGuiApplication::clipboard()->clear();
        box.copy();
        return QGuiApplication::clipboard()->text();
    }

    static void paste(MemoBox &box, const QString &text)
    {
        QGuiApplication::clipboard()->setText(text);
        box.paste();
    }

    static QString typed(const MemoBox &box) { return box.text().replace(u"\r\n"_s, u"\n"_s); }

    static void givesBack(const QString &line)
    {
        MemoBox box;
        box.setText(line);
        QCOMPARE(box.text(), line);
        QVERIFY(isWhole(box, line));
        QVERIFY(!box.document()->isModified() && !box.document()->isUndoAvailable());
        const QString lines = line + u'\n' + line + u"\r\n\u2029\u2028"_s + line;
        box.setText(lines);
        QCOMPARE(box.text(), lines); // only looked at
        QVERIFY(!hasLongBlock(box));
        QTest::keyClick(&box, Qt::Key_Return, Qt::ShiftModifier);
        const QString end = u"\r\n"_s;
        QCOMPARE(box.text(), end + line + end + line + end + end + end + line);
        QTest::keyClick(&box, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(box.text(), lines);
    }

    /// Edits at random places beside a plain text that is edited likewise, and then undoes and redoes all.
    static void edit(quint32 seed)
    {
        QRandomGenerator random(seed);
        const auto someText = [&random] {
            const QString words = QStringList{u"x"_s, u"ab c "_s, u"\u5317\u4EAC"_s}.at(random.bounded(3));
            const int sizes[] = {0, 1, 7, 999, 2000, 2001, 6000};
            const QString text = words.repeated(sizes[random.bounded(7)]);
            return random.bounded(3) == 0 ? text + u'\n' + text : text;
        };
        MemoBox box;
        QStringList states{someText()};
        box.setText(states.first());
        for (int edit = 0; edit < 25; ++edit) {
            QString model = states.last();
            const int end = box.document()->characterCount() - 1;
            // A place in the line as often as one of the places where blocks meet.
            const auto somePlace = [&] {
                const QTextBlock block = box.document()->findBlock(random.bounded(end + 1));
                return random.bounded(2) == 0 ? random.bounded(end + 1)
                                              : block.position() + (random.bounded(2) * (block.length() - 1));
            };
            const int from = somePlace();
            const int to = random.bounded(2) == 0 ? from : somePlace();
            const qsizetype start = copied(box, 0, std::min(from, to)).size();
            const qsizetype size = copied(box, 0, std::max(from, to)).size() - start;
            QCOMPARE(copied(box, from, to), model.mid(start, size));
            const QString text = someText();
            const auto press = [&box](Qt::Key key) { QTest::keyClick(&box, key); };
            const std::function<void()> edits[] = {
                [&] { paste(box, text), model.replace(start, text.isEmpty() ? 0 : size, text); },
                [&] { press(Qt::Key_Return), model.replace(start, size, u'\n'); },
                [&] { press(Qt::Key_K), model.replace(start, size, u'k'); },
                [&] { press(Qt::Key_Delete), model.remove(start, std::max<qsizetype>(size, 1)); },
                [&] {
                    press(Qt::Key_Backspace);
                    model.remove(size > 0 || start == 0 ? start : start - 1,
                                 start > 0 && size == 0 ? 1 : size);
                }};
            select(box, from, to);
            edits[random.bounded(5)]();
            states += model;
            QCOMPARE(typed(box), model);
            QVERIFY(!hasLongBlock(box));
        }
        for (const bool back : {true, false}) {
            while (back ? box.document()->isUndoAvailable() : box.document()->isRedoAvailable()) {
                QTest::keyClick(&box, back ? Qt::Key_Z : Qt::Key_Y, Qt::ControlModifier);
                QVERIFY(states.contains(typed(box)));
                QVERIFY(!hasLongBlock(box));
            }
            QCOMPARE(typed(box), back ? states.first() : states.last());
        }
    }

private Q_SLOTS:
    void longLinesAreGivenBackAsTheyCame()
    {
        for (const auto &[name, words] : {std::pair("words", u"one two, "_s),
                                          {"no word ends", u"x"_s},
                                          {"Arabic", u"\u0645\u0650\u062D\u0652\u0648\u064E "_s},
                                          {"Chinese", u"\u5317\u4EAC\u3002\u5E02"_s},
                                          {"Korean of parts", u"\u1112\u1161\u11AB"_s},
                                          {"pairs", u"a\U0001F600\U0001F468\u200D\U0001F469 "_s},
                                          {"marks", u"a\u0301\u0323\u0302"_s},
                                          {"no-break spaces", u"a\u00A0\u00AD"_s}}) {
            for (const int size : {0, 1, 2000, 2001, 200'000}) {
                const support::Row row(name);
                QVERIFY(!QTest::currentTestFailed());
                givesBack(words.repeated(size / words.size() + 1).first(size));
            }
        }
    }

    void nobodyReadsABreakAndNoCharacterIsCutWhileALineGrows()
    {
        MemoBox box;
        QString line = u"0123456789"_s.repeated(400);
        box.setText(line);
        QStringList read;
        connect(&box, &MemoBox::textChanged, this, [&] { read += box.text(); });
        qsizetype place = box.document()->firstBlock().length() - 1;
        select(box, int(place) + 1, int(place) + 1);
        for (const QString &text :
             {u"\u0301"_s, u"two\nlines"_s, QString(5000, u'x')}) { // by an input method
            QInputMethodEvent event;
            event.setCommitString(text);
            QCoreApplication::sendEvent(&box, &event);
            line.insert(place, text);
            place += text.size();
            QVERIFY(!hasLongBlock(box));
            QCOMPARE(typed(box), line);
            QVERIFY(text.size() > 1 || isWhole(box, line));
        }
        QCOMPARE(read.join(QString()).count(u'\n'), read.filter(u"two"_s).size());
    }

    void anyEditsGiveTheTextThatTheyGiveElsewhere()
    {
        for (quint32 seed = 1; seed <= 40 && !QTest::currentTestFailed(); ++seed) {
            const QByteArray name = QByteArray::number(seed);
            const support::Row row(name.constData());
            edit(seed);
        }
    }
};

QTEST_MAIN(tst_MemoBox)
#include "tst_MemoBox.moc"
