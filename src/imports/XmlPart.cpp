#include "imports/XmlPart.h"

#include "core/Error.h"

using namespace Qt::StringLiterals;

namespace imports {

namespace {

constexpr int mostPiecesWithoutMark = 8; // of 64 kB
constexpr int deepest = 64;
constexpr qsizetype mostAttributes = 1000; // the reader compares each with each

core::Error damaged(const QString &description)
{
    return {0, u"the table in the file cannot be read: "_s + description};
}

} // namespace

bool XmlPart::next()
{
    for (int pieces = 0; pieces < mostPiecesWithoutMark;) {
        switch (m_xml.readNext()) {
        case QXmlStreamReader::StartElement:
            if (++m_depth > deepest) {
                throw damaged(u"nested too deeply"_s);
            }
            if (m_xml.attributes().size() > mostAttributes) {
                throw damaged(u"too many attributes"_s);
            }
            return true;
        case QXmlStreamReader::EndElement:
            --m_depth;
            return true;
        case QXmlStreamReader::Characters:
            return true;
        case QXmlStreamReader::EndDocument:
            return false;
        case QXmlStreamReader::DTD:
        case QXmlStreamReader::EntityReference:
            throw damaged(u"it declares entities"_s);
        case QXmlStreamReader::Invalid:
            if (m_xml.error() != QXmlStreamReader::PrematureEndOfDocumentError) {
                throw damaged(m_xml.errorString());
            }
            if (const QByteArray piece = m_read(); !piece.isEmpty()) {
                m_xml.addData(piece);
                ++pieces;
                break;
            }
            throw damaged(u"it is cut off"_s);
        default:
            break;
        }
    }
    throw damaged(u"a text that is too long"_s);
}

} // namespace imports
