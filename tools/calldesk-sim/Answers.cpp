#include "Answers.h"

#include "customers/CustomerForwarding.h"

using namespace Qt::StringLiterals;

namespace sim {

QString visibleText(const QString &text)
{
    constexpr char16_t symbols = 0x2400; // the Unicode block that pictures the control codes 0 to 32
    QString visible = text;
    for (QChar &character : visible) {
        if (character.unicode() < 0x20) {
            character = QChar(static_cast<char16_t>(symbols + character.unicode()));
        } else if (character.category() == QChar::Other_Control) {
            character = QChar::ReplacementCharacter;
        }
    }
    return visible;
}

namespace {

// One line a text; those that hold nothing are left out.
QString describeCustomer(const QList<customers::ReceivedField> &fields, const CodePageChoice &codePage)
{
    QString description = u"customer record"_s;
    for (const customers::ReceivedField &field : fields) {
        if (!field.bytes.isEmpty()) {
            description += u"\n    "_s + field.column + u": "_s +
                           visibleText(codePage.decode(field.bytes.toByteArray()));
        }
    }
    return description;
}

} // namespace

QString describeAnswer(const QByteArray &bytes, const CodePageChoice &codePage)
{
    constexpr qsizetype emptyMessage = 206; // characters of a short message with no text between its braces
    if (const QList<customers::ReceivedField> fields = customers::receivedFields(bytes); !fields.isEmpty()) {
        return describeCustomer(fields, codePage);
    }
    const QString text = codePage.decode(bytes);
    if (text.size() < emptyMessage || text.first(50).trimmed() != u"SENDSMALLMESSAGE"_s) {
        return visibleText(text);
    }
    const QString sendTo = text.sliced(50, 50).trimmed();
    return visibleText(u"SENDSMALLMESSAGE to "_s + sendTo + u": "_s + text.sliced(203).chopped(3));
}

} // namespace sim
