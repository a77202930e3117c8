#include "store/TextOrder.h"

#include "store/TextElements.h"

#include <algorithm>

namespace store {

namespace {

int orderOf(char32_t left, char32_t right)
{
    if (left == ElementReader::end || right == ElementReader::end) {
        return left == right ? 0 : left == ElementReader::end ? -1 : 1;
    }
    return left < right ? -1 : left > right ? 1 : 0;
}

int compareLetters(QByteArrayView left, QByteArrayView right)
{
    ElementReader leftReader(left);
    ElementReader rightReader(right);
    while (true) {
        const char32_t element = leftReader.nextLetter();
        const int order = orderOf(element, rightReader.nextLetter());
        if (order != 0 || element == ElementReader::end) {
            return order;
        }
    }
}

// For texts of the same letters: the one without an accent where they first differ comes first.
int compareAccents(QByteArrayView left, QByteArrayView right)
{
    ElementReader leftReader(left);
    ElementReader rightReader(right);
    while (true) {
        const char32_t leftElement = leftReader.next();
        const char32_t rightElement = rightReader.next();
        if (leftElement == rightElement) {
            if (leftElement == ElementReader::end) {
                return 0;
            }
            continue;
        }
        const bool leftAccent = leftElement != ElementReader::end && isAccent(leftElement);
        const bool rightAccent = rightElement != ElementReader::end && isAccent(rightElement);
        return leftAccent == rightAccent ? orderOf(leftElement, rightElement) : leftAccent ? 1 : -1;
    }
}

// Without the blanks behind it. A text of blanks alone keeps them: it is told from the empty text and from
// another number of blanks, as the data fix-ups need it.
QByteArrayView withoutTrailingBlanks(QByteArrayView text)
{
    constexpr QByteArrayView wideBlank("\xE3\x80\x80");
    QByteArrayView rest = text;
    while (!rest.isEmpty()) {
        if (rest.endsWith(' ')) {
            rest.chop(1);
        } else if (rest.endsWith(wideBlank)) {
            rest.chop(wideBlank.size());
        } else {
            return rest;
        }
    }
    return text;
}

constexpr int folded(char c)
{
    return c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c;
}

// How many bytes from the start on are the same ASCII letters in both.
qsizetype commonAscii(QByteArrayView left, QByteArrayView right)
{
    const qsizetype shorter = std::min(left.size(), right.size());
    qsizetype i = 0;
    while (i < shorter && folded(left[i]) == folded(right[i]) && (left[i] & 0x80) == 0) {
        ++i;
    }
    return i;
}

} // namespace

int compareJet(QByteArrayView left, QByteArrayView right)
{
    left = withoutTrailingBlanks(left);
    right = withoutTrailingBlanks(right);
    const qsizetype common = commonAscii(left, right);
    left = left.sliced(common);
    right = right.sliced(common);
    const bool leftAscii = left.isEmpty() || (left.front() & 0x80) == 0;
    const bool rightAscii = right.isEmpty() || (right.front() & 0x80) == 0;
    if (leftAscii && rightAscii) { // the first difference decides, whatever follows
        return left.isEmpty() || right.isEmpty() ? int(right.isEmpty()) - int(left.isEmpty())
                                                 : folded(left.front()) - folded(right.front());
    }
    const int order = compareLetters(left, right);
    return order != 0 ? order : compareAccents(left, right);
}

} // namespace store
