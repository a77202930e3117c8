#include "store/engine/SqliteStatement.h"

#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace store {

core::Error sqliteError(int code, const QString &description)
{
    using Kind = core::Error::Kind;
    constexpr int primaryCode = 0xFF; // an extended one tells more in its upper bits
    const int number = code & primaryCode;
    const bool duplicate = code == SQLITE_CONSTRAINT_UNIQUE || code == SQLITE_CONSTRAINT_PRIMARYKEY ||
                           code == SQLITE_CONSTRAINT_ROWID;
    switch (number) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return {number, description, Kind::Locked};
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
    case SQLITE_IOERR:
        return {number, description, Kind::Damaged};
    case SQLITE_TOOBIG:
        return {number, description, Kind::TooLong};
    default:
        return {number, description, duplicate ? Kind::Duplicate : Kind::Other};
    }
}

void throwSqliteError(sqlite3 *engine)
{
    QString description = QString::fromUtf8(sqlite3_errmsg(engine));
    if (const char *file = sqlite3_db_filename(engine, "main"); file != nullptr) {
        description += u": "_s + QString::fromUtf8(file);
    }
    throw sqliteError(sqlite3_extended_errcode(engine), description);
}

void SqliteStatement::Finalize::operator()(sqlite3_stmt *statement) const
{
    sqlite3_finalize(statement);
}

SqliteStatement::SqliteStatement(sqlite3 *engine, const QString &sql)
{
    const QByteArray bytes = sql.toUtf8();
    sqlite3_stmt *statement = nullptr;
    const char *rest = nullptr;
    const int length = static_cast<int>(bytes.size()) + 1;
    if (sqlite3_prepare_v2(engine, bytes.constData(), length, &statement, &rest) != SQLITE_OK) {
        throwSqliteError(engine);
    }
    m_statement.reset(statement);
    if (statement == nullptr || rest != bytes.constEnd()) {
        throw core::Error(SQLITE_ERROR, u"not exactly one statement: "_s + sql);
    }
}

void SqliteStatement::bind(const QVariantList &values)
{
    if (values.size() != sqlite3_bind_parameter_count(raw())) {
        throw core::Error(SQLITE_RANGE, u"the statement asks for another number of values"_s);
    }
    for (int i = 0; i < values.size(); ++i) {
        bindOne(i + 1, values.at(i));
    }
}

void SqliteStatement::bindOne(int position, const QVariant &value)
{
    int result = SQLITE_OK;
    switch (value.isNull() ? QMetaType::UnknownType : value.typeId()) {
    case QMetaType::UnknownType:
        result = sqlite3_bind_null(raw(), position);
        break;
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Short:
    case QMetaType::LongLong:
        result = sqlite3_bind_int64(raw(), position, value.toLongLong());
        break;
    case QMetaType::Double:
        result = sqlite3_bind_double(raw(), position, value.toDouble());
        break;
    case QMetaType::QByteArray: {
        const QByteArray bytes = value.toByteArray();
        const auto size = static_cast<sqlite3_uint64>(bytes.size());
        result = sqlite3_bind_blob64(raw(), position, bytes.constData(), size, SQLITE_TRANSIENT);
        break;
    }
    default: {
        const QByteArray text = value.toString().toUtf8();
        const auto size = static_cast<sqlite3_uint64>(text.size());
        result = sqlite3_bind_text64(raw(), position, text.constData(), size, SQLITE_TRANSIENT, SQLITE_UTF8);
    }
    }
    if (result != SQLITE_OK) {
        throwSqliteError(sqlite3_db_handle(raw()));
    }
}

bool SqliteStatement::step()
{
    const int result = sqlite3_step(raw());
    if (result == SQLITE_ROW) {
        return true;
    }
    if (result != SQLITE_DONE) {
        throwSqliteError(sqlite3_db_handle(raw()));
    }
    return false;
}

void SqliteStatement::reset()
{
    sqlite3_reset(raw());
}

QStringList SqliteStatement::columnNames() const
{
    QStringList names;
    for (int i = 0; i < sqlite3_column_count(raw()); ++i) {
        names.append(QString::fromUtf8(sqlite3_column_name(raw(), i)));
    }
    return names;
}

QByteArrayView SqliteStatement::bytes(int column) const
{
    // Each asking by the column costs. The value is unprotected: a connection belongs to one thread.
    sqlite3_value *value = sqlite3_column_value(raw(), column);
    const auto *text = reinterpret_cast<const char *>(sqlite3_value_text(value));
    return text != nullptr ? QByteArrayView(text, sqlite3_value_bytes(value)) : QByteArrayView("");
}

qint64 SqliteStatement::key(int column) const
{
    return sqlite3_column_int64(raw(), column);
}

QVariant SqliteStatement::value(int column) const
{
    switch (sqlite3_column_type(raw(), column)) {
    case SQLITE_NULL:
        return {};
    case SQLITE_INTEGER: {
        const qint64 number = sqlite3_column_int64(raw(), column);
        return isYesNo(column) ? QVariant(number != 0) : QVariant(number);
    }
    case SQLITE_FLOAT:
        return sqlite3_column_double(raw(), column);
    case SQLITE_BLOB:
        return QByteArray(static_cast<const char *>(sqlite3_column_blob(raw(), column)),
                          sqlite3_column_bytes(raw(), column));
    default:
        return text(column);
    }
}

QVariantList SqliteStatement::row() const
{
    const int columns = sqlite3_column_count(raw());
    QVariantList values;
    values.reserve(columns);
    for (int i = 0; i < columns; ++i) {
        values.append(value(i));
    }
    return values;
}

bool SqliteStatement::isYesNo(int column) const
{
    const char *type = sqlite3_column_decltype(raw(), column);
    return type != nullptr && qstricmp(type, "BOOLEAN") == 0;
}

} // namespace store
