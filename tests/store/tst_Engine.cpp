#include "DeliveredFiles.h"
#include "store/engine/Engine.h"
#include "support/Test.h"

using store::Engine, store::Index, store::Row;
using Kind = core::Error::Kind;

/// What the store asks of its database engine, on the interface alone: holds for every engine that is opened
/// here.
class tst_Engine : public QObject
{
    Q_OBJECT

    std::unique_ptr<support::TestDesk> m_desk;
    QString m_path;

    std::shared_ptr<Engine> open(Engine::Mode mode = Engine::Mode::ReadWrite) const
    {
        return store::openEngine(m_path, mode, store::Wildcards::Asterisk);
    }
    static QStringList texts(Engine &engine, const QString &select, const QVariantList &bound = {})
    {
        QStringList found;
        engine.forEach(select, bound, [&](const Row &row) { found.append(row.text(0)); });
        return found;
    }
    static std::optional<Kind> failureOf(const std::function<void()> &work)
    {
        try {
            work();
        } catch (const core::Error &error) {
            return error.kind();
        }
        return {};
    }

private Q_SLOTS:
    void init()
    {
        m_desk = std::make_unique<support::TestDesk>();
        m_path = m_desk->paths.PhoneBookFile;
        m_desk->runSql(m_path, u"Create Table phonebook (SN counter, Telno text(20), Paid BIT, Note Memo);"
                               "create unique index SN on phonebook (SN);"
                               "create index Places on phonebook (Telno, Paid);"
                               "Create Table plain (Name text(50) not null primary key);"
                               "insert into phonebook(Telno,Paid,Note) values('00123',true,'first')"_s);
    }

    void aRowComesBackAsItWasBound()
    {
        const std::shared_ptr<Engine> engine = open();
        const QVariantList written{u"Łucja 梅"_s, false, QVariant()};
        QCOMPARE(engine->execute(u"insert into phonebook(Telno,Paid,Note) values(?,?,?)"_s, written), 1);
        const auto statement = engine->prepare(u"select Telno,Paid,Note,SN from phonebook where [SN]=?"_s);
        statement->bind({2});
        QVERIFY(statement->step());
        QCOMPARE(statement->row(), written + QVariantList{qint64(2)});
        QCOMPARE(statement->columnNames(), QStringList({u"Telno"_s, u"Paid"_s, u"Note"_s, u"SN"_s}));
        QCOMPARE(statement->bytes(0), QByteArrayView("Łucja 梅"));
        QCOMPARE(statement->text(2), QString());
        QCOMPARE(statement->integer(3), 2);
        QVERIFY(!statement->step());
        QCOMPARE(engine->execute(u"update phonebook set Note='x'"_s), 2);
    }

    void theSchemaIsToldInGivenNames()
    {
        const std::shared_ptr<Engine> engine = open();
        QCOMPARE(engine->tableNames(), QStringList({u"phonebook"_s, u"plain"_s}));
        QStringList told;
        for (const Index &index : engine->indexesOf(u"PhoneBook"_s)) {
            QVERIFY(index.ofAllRows &&
                    index.isNamed(u"phonebook"_s, index.columns.size() == 1 ? u"sn"_s : u"places"_s));
            told.append(index.columns.join(u'+'));
        }
        told.sort();
        QCOMPARE(told, QStringList({u"SN"_s, u"Telno+Paid"_s}));
        QCOMPARE(engine->autoNumberOf(u"phonebook"_s), u"SN"_s);
        QCOMPARE(engine->autoNumberOf(u"plain"_s), QString());
    }

    void aNumberIsGivenOnce()
    {
        const std::shared_ptr<Engine> mine = open();
        const std::shared_ptr<Engine> theirs = open();
        QCOMPARE(mine->reserveNumber(u"PhoneBook"_s), 2);
        QCOMPARE(theirs->reserveNumber(u"phonebook"_s), 3);
        QCOMPARE(texts(*mine, u"insert into phonebook default values returning rowid"_s),
                 QStringList(u"4"_s));
        mine->keepLastNumber(u"phonebook"_s, 99);
        QCOMPARE(theirs->reserveNumber(u"phonebook"_s), 100);
    }

    void aFailureIsToldByItsKind()
    {
        const std::shared_ptr<Engine> engine = open();
        const QString half(60'000, u'a');
        QCOMPARE(failureOf([&] { engine->execute(u"insert into phonebook(SN) values(1)"_s); }),
                 Kind::Duplicate);
        QCOMPARE(failureOf([&] { texts(*engine, u"select SN from phonebook where Note like ?"_s, {half}); }),
                 Kind::TooLong);
        QCOMPARE(failureOf([&] { engine->execute(u"insert into plain values(null)"_s); }), Kind::Other);
        QCOMPARE(failureOf([&] { engine->execute(u"delete from phonebook; delete from plain"_s); }),
                 Kind::Other);
        const store::NoWaiting atOnce;
        engine->transaction([&] { QCOMPARE(failureOf([&] { open()->transaction([] {}); }), Kind::Locked); });
        engine->transaction([&] {
            for (int row = 0; row < 100; ++row) {
                engine->execute(u"insert into phonebook(Note) values(?)"_s, {QString(200, u'n')});
            }
        });
        QByteArray bytes = m_desk->fileBytes(m_path);
        const qsizetype page = bytes.lastIndexOf("nnn") / 4096 * 4096;
        m_desk->writeFile(m_path, bytes.replace(page, 4096, QByteArray(4096, '\x7F')));
        QCOMPARE(failureOf([&] { texts(*open(), u"select Note from phonebook"_s); }), Kind::Damaged);
    }

    void aTransactionWithinAnotherIsAPartOfIt()
    {
        const std::shared_ptr<Engine> engine = open();
        const auto addOne = [&] { engine->execute(u"insert into plain values('a')"_s); };
        QVERIFY(failureOf([&] {
            engine->transaction([&] {
                engine->transaction(addOne);
                throw core::Error(0, u"changed its mind"_s);
            });
        }));
        QCOMPARE(texts(*engine, u"select Name from plain"_s), QStringList());
        engine->transaction([&] { engine->transaction(addOne); });
        QCOMPARE(texts(*open(), u"select Name from plain"_s), QStringList(u"a"_s));
    }

    void onlyTheSavesOfOthersAreNews()
    {
        const std::shared_ptr<Engine> engine = open();
        const QByteArray before = engine->state();
        engine->transaction([&] { engine->execute(u"insert into plain values('mine')"_s); });
        QCOMPARE(engine->state(), before);
        engine->execute(u"insert into plain values('by whoever it was')"_s); // told to nobody
        QVERIFY(engine->state() != before);
        QVERIFY(!engine->isReplaced());
        QVERIFY(QFile::remove(m_path));
        QVERIFY(engine->isReplaced());
    }
};

QTEST_GUILESS_MAIN(tst_Engine)
#include "tst_Engine.moc"
