#include "store/Statement.h"

#include "core/Error.h"

#include <QByteArray>
#include <QStringList>

#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace store {

void throwEngineError(sqlite3 *engine)
{
    constexpr int primaryCode = 0xFF;
    const int number = sqlite3_errcode(engine) & primaryCode;
    QString description = QString::fromUtf8(sqlite3_errmsg(engine));
    if (const char *file = sqlite3_db_filename(engine, "main"); file != nullptr) {
        description += u": "_s + QString::fromUtf8(file);
    }
    throw core::Error(number, description);
}

void Statement::Finalize::operator()(sqlite3_stmt *statement) const
{
    sqlite3_finalize(statement);
}

Statement::Statement(sqlite3 *engine, const QString &sql)
{
    const QByteArray bytes = sql.toUtf8();
    sqlite3_stmt *statement = nullptr;
    const char *rest = nullptr;
    const int length = static_cast<int>(bytes.size()) + 1;
    if (sqlite3_prepare_v2(engine, bytes.constData(), length, &statement, &rest) != SQLITE_OK) {
        throwEngineError(engine);
    }
    m_statement.reset(statement);
    if (statement == nullptr || rest != bytes.constEnd()) {
        throw core::Error(SQLITE_ERROR, u"not exactly one statement: "_s + sql);
    }
}

void Statement::bind(const QVariantList &values)
{
    if (values.size() != sqlite3_bind_parameter_count(raw())) {
        throw core::Error(SQLITE_RANGE, u"the statement asks for another number of values"_s);
    }
    for (int i = 0; i < values.size(); ++i) {
        bindOne(i + 1, values.at(i));
    }
}

void Statement::bindOne(int position, const QVariant &value)
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
        throwEngineError(sqlite3_db_handle(raw()));
    }
}

bool Statement::step()
{
    const int result = sqlite3_step(raw());
    if (result == SQLITE_ROW) {
        return true;
    }
    if (result != SQLITE_DONE) {
        throwEngineError(sqlite3_db_handle(raw()));
    }
    return false;
}

void Statement::reset()
{
    sqlite3_reset(raw());
}

int Statement::columnCount() const
{
    return sqlite3_column_count(raw());
}

QStringList Statement::columnNames() const
{
    QStringList names;
    for (int i = 0; i < columnCount(); ++i) {
        names.append(QString::fromUtf8(sqlite3_column_name(raw(), i)));
    }
    return names;
}

QVariant Statement::value(int column) const
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
        const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(raw(), column));
        return QString::fromUtf8(text, sqlite3_column_bytes(raw(), column));
    }
}

QVariantList Statement::row() const
{
    QVariantList values;
    values.reserve(columnCount());
    for (int i = 0; i < columnCount(); ++i) {
        values.append(value(i));
    }
    return values;
}

bool Statement::isYesNo(int column) const
{
    const char *type = sqlite3_column_decltype(raw(), column);
    return type != nullptr && qstricmp(type, "BOOLEAN") == 0;
}

} // namespace store
