#pragma once

#include <QString>
#include <exception>
#include <utility>

namespace core {

/// The world failed: a file, a socket or a database did not do what was asked. Nothing found is not an Error.
class Error : public std::exception
{
public:
    /// What is answered by more than telling it.
    enum class Kind {
        Other,
        Locked,    ///< by another program: worth another try
        Damaged,   ///< a database, or the disk that it stands on
        TooLong,   ///< a text that is searched for
        Duplicate, ///< a value in a row that another row has
        Empty,     ///< nothing has failed but that a table holds none of what is looked for
    };

    Error(int number, QString description, Kind kind = Kind::Other)
        : m_number(number), m_description(std::move(description)), m_bytes(m_description.toUtf8()),
          m_kind(kind)
    {}
    /// The failing system's own number (errno, socket error, database code), 0 where it has none.
    int number() const { return m_number; }
    Kind kind() const { return m_kind; }
    const QString &description() const { return m_description; }
    const char *what() const noexcept override { return m_bytes.constData(); }

private:
    int m_number;
    QString m_description;
    QByteArray m_bytes;
    Kind m_kind;
};

} // namespace core
