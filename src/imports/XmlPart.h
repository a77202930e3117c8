#pragma once

#include <QByteArray>
#include <QXmlStreamReader>

#include <functional>

namespace imports {

/// An XML text that is read in pieces. Throws core::Error where it is damaged, declares entities, or nests or
/// goes on without a mark for longer than any honest one.
class XmlPart
{
public:
    /// `read` gives the next piece, an empty one at the end.
    explicit XmlPart(std::function<QByteArray()> read) : m_read(std::move(read)) {}

    /// Goes to the next beginning or end of an element, or to text; false behind the last.
    bool next();
    bool begins(QLatin1StringView element) const { return m_xml.isStartElement() && m_xml.name() == element; }
    bool ends(QLatin1StringView element) const { return m_xml.isEndElement() && m_xml.name() == element; }
    QString attribute(QLatin1StringView name) const { return m_xml.attributes().value(name).toString(); }
    const QXmlStreamReader &xml() const { return m_xml; }

private:
    std::function<QByteArray()> m_read;
    QXmlStreamReader m_xml;
    int m_depth = 0;
};

} // namespace imports
