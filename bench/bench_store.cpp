// Searching the eight columns of a customer search among 100,000 customers of several scripts, beside the
// engine's own like, which knows the case of ASCII letters only.

#include "Ratios.h"

#include "store/Database.h"
#include "store/EngineFunctions.h"

#include <QFile>
#include <QStringList>
#include <QTemporaryDir>

#include <iterator>
#include <random>
#include <sqlite3.h>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

const QStringList searched{u"CustomerName"_s, u"WorkPhones"_s,         u"ContactPersonName"_s, u"City"_s,
                           u"Broker"_s,       u"ContactPersonEmail"_s, u"CustomerType"_s,      u"Note"_s};

QString schema()
{
    QFile file(QStringLiteral(CALLDESK_SCHEMA_FOLDER "/Customer.sql"));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// A file of customers, and two connections to it: one with our functions, one as the engine comes.
class Customers
{
public:
    explicit Customers(int count)
    {
        const QString path = m_folder.filePath(u"Customer.ccsm"_s);
        store::createDatabase(path, schema(), [count](store::Database &database) { fill(database, count); });
        sqlite3_open(path.toUtf8().constData(), &m_ours);
        sqlite3_open(path.toUtf8().constData(), &m_plain);
        store::registerFunctions(m_ours);
        const auto anyOrder = [](void *, int, const void *, int, const void *) {
            return 0;
        }; // nothing is sorted
        sqlite3_create_collation(m_plain, "JET", SQLITE_UTF8, nullptr, anyOrder);
    }
    ~Customers()
    {
        sqlite3_close(m_ours);
        sqlite3_close(m_plain);
    }
    Q_DISABLE_COPY_MOVE(Customers)

    void search(benchmark::State &state, bool ours, const QString &word) const
    {
        const QString pattern = ours ? u" glob '*%1*'"_s.arg(word) : u" like '%%1%'"_s.arg(word);
        const QByteArray sql =
            (u"select count(*) from customer where "_s + searched.join(pattern + u" or "_s) + pattern)
                .toUtf8();
        for ([[maybe_unused]] auto _ : state) {
            if (sqlite3_exec(ours ? m_ours : m_plain, sql.constData(), nullptr, nullptr, nullptr) !=
                SQLITE_OK) {
                throw std::runtime_error(sql.toStdString());
            }
        }
    }

private:
    static void fill(store::Database &database, int count)
    {
        static const QStringList words{u"Anna"_s, u"Spółka"_s,  u"张伟"_s,   u"贸易公司"_s,
                                       u"محمد"_s, u"İbrahim"_s, u"Handels"_s};
        std::mt19937 random(20261121);
        const auto word = [&] { return words.at(qsizetype(random() % unsigned(words.size()))); };
        const QString marks = QStringList(searched.size(), u"?"_s).join(u',');
        const QString insert =
            u"insert into customer("_s + searched.join(u',') + u") values("_s + marks + u')';
        for (int i = 0; i < count; ++i) {
            const QString number = QString::number(i);
            database.Execute(insert,
                             {word() + u' ' + word() + number, u"0533-12%1,139%1"_s.arg(number),
                              word() + u' ' + word(), word(), word(), number + u"@example.org"_s, word(),
                              u"A note about %1, who asked for %2 twice"_s.arg(word(), word())});
        }
    }

    QTemporaryDir m_folder;
    sqlite3 *m_ours = nullptr;
    sqlite3 *m_plain = nullptr;
};

} // namespace

std::vector<bench::Row> bench::rows()
{
    constexpr int customerCount = 100000;
    constexpr double reach = 1.5;
    const auto customers = std::make_shared<Lazy<Customers>>(customerCount);
    std::vector<Row> rows;
    for (const auto &[name, word] :
         {std::pair("a word that nobody has", u"zzqx"_s), std::pair("an English word", u"hANDELs"_s),
          std::pair("a Polish word", u"spółka"_s), std::pair("a Chinese name", u"张伟"_s),
          std::pair("a piece of a number", u"99917"_s)}) {
        const auto work = [customers, word = word](bool ours) {
            return [customers, word, ours](benchmark::State &state) {
                customers->get().search(state, ours, word);
            };
        };
        rows.push_back({std::string("search 100,000 customers for ") + name, work(true), work(false), reach});
    }
    return rows;
}
