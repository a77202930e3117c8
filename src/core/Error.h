#pragma once

#include <QString>
#include <exception>
#include <utility>

namespace core {

/// The world failed: a file, a socket or a database did not do what was asked. Nothing found is not an Error.
class Error : public std::exception
{
public:
    Error(int number, QString description)
        : m_number(number), m_description(std::move(description)), m_bytes(m_description.toUtf8())
    {}
    /// The failing system's own number (errno, socket error, database code), 0 where it has none.
    int number() const { return m_number; }
    const QString &description() const { return m_description; }
    const char *what() const noexcept override { return m_bytes.constData(); }

private:
    int m_number;
    QString m_description;
    QByteArray m_bytes;
};

} // namespace core
