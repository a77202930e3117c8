#include "store/TextMatcher.h"

#include "store/CaseFolding.h"

#include <algorithm>
#include <string_view>

namespace store {

namespace {

constexpr std::array<unsigned char, 256> makeAsciiFold()
{
    std::array<unsigned char, 256> fold{};
    for (size_t i = 0; i < fold.size(); ++i) {
        fold[i] = static_cast<unsigned char>(i >= 'A' && i <= 'Z' ? i + 32 : i);
    }
    return fold;
}
constexpr std::array<unsigned char, 256> asciiFold = makeAsciiFold();

char32_t nextFolded(Utf8Reader &reader)
{
    const char32_t c = reader.next();
    return c < 0x80 ? asciiFold[c] : CaseFolding::table().folded(c);
}

unsigned char leadByte(char32_t c)
{
    if (c < 0x80) {
        return static_cast<unsigned char>(c);
    }
    if (c < 0x800) {
        return static_cast<unsigned char>(0xC0 | c >> 6);
    }
    return static_cast<unsigned char>(c < 0x10000 ? 0xE0 | c >> 12 : 0xF0 | c >> 18);
}

bool isBeyondUnicode(char32_t c)
{
    return c >= 0x110000;
}

} // namespace

TextMatcher::TextMatcher(QByteArrayView pattern, Wildcards wildcards) : m_segments(1)
{
    parse(Utf8Reader(pattern), wildcards);
    std::ranges::for_each(m_segments, prepare);
}

void TextMatcher::parse(Utf8Reader pattern, Wildcards wildcards)
{
    const bool asterisk = wildcards == Wildcards::Asterisk;
    while (!pattern.atEnd()) {
        const char *start = pattern.place();
        const char32_t c = pattern.next();
        if (c == (asterisk ? U'*' : U'%')) {
            m_segments.emplace_back();
        } else if (c == (asterisk ? U'?' : U'_')) {
            add(m_segments.back(), {Place::Kind::Any, 0, {}});
        } else if (asterisk && c == U'#') {
            add(m_segments.back(), {Place::Kind::Digit, 0, {}});
        } else if (!asterisk || c != U'[' || !parseClass(pattern, m_segments.back())) {
            addCharacter(m_segments.back(), c, {start, pattern.place()});
        }
    }
}

// Reads what follows a "[". An empty class stands for nothing at all; false, with nothing read, when no "]"
// comes.
bool TextMatcher::parseClass(Utf8Reader &pattern, Segment &segment)
{
    Utf8Reader reader = pattern;
    std::u32string inside;
    char32_t c = 0;
    while (!reader.atEnd() && (c = reader.next()) != U']') {
        inside.push_back(c);
    }
    if (c != U']') {
        return false;
    }
    pattern = reader;
    const bool negated = inside.starts_with(U'!') && inside.size() > 1;
    Place place{negated ? Place::Kind::NoneOf : Place::Kind::OneOf, 0, {}};
    for (size_t i = negated ? 1 : 0; i < inside.size(); ++i) {
        const bool range = i + 2 < inside.size() && inside[i + 1] == U'-';
        const auto &folding = CaseFolding::table();
        place.ranges.emplace_back(folding.folded(inside[i]), folding.folded(inside[range ? i + 2 : i]));
        i += range ? 2 : 0;
    }
    if (!inside.empty()) {
        add(segment, std::move(place));
    }
    return true;
}

void TextMatcher::add(Segment &segment, Place place)
{
    segment.verbatim = false;
    segment.places.push_back(std::move(place));
}

void TextMatcher::addCharacter(Segment &segment, char32_t c, QByteArrayView bytes)
{
    const char32_t folded = CaseFolding::table().folded(c);
    segment.verbatim = segment.verbatim && !CaseFolding::table().hasVariants(folded);
    segment.bytes.append(bytes.data(), static_cast<size_t>(bytes.size()));
    segment.places.push_back({Place::Kind::Same, folded, {}});
}

void TextMatcher::prepare(Segment &segment)
{
    if (segment.places.empty() || segment.places.front().kind != Place::Kind::Same ||
        isBeyondUnicode(segment.places.front().folded)) {
        segment.starts.fill(true);
        return;
    }
    for (const char32_t c : CaseFolding::table().variants(segment.places.front().folded)) {
        segment.starts[leadByte(c)] = true;
    }
}

bool TextMatcher::fits(const Place &place, char32_t folded)
{
    const auto holds = [folded](const auto &range) {
        return range.first <= folded && folded <= range.second;
    };
    switch (place.kind) {
    case Place::Kind::Same:
        return folded == place.folded;
    case Place::Kind::Any:
        return true;
    case Place::Kind::Digit:
        return folded >= U'0' && folded <= U'9';
    case Place::Kind::OneOf:
        return std::ranges::any_of(place.ranges, holds);
    case Place::Kind::NoneOf:
        return std::ranges::none_of(place.ranges, holds);
    }
    return false;
}

// Where the match that begins at `from` ends; null without one.
const char *TextMatcher::endOfMatch(const Segment &segment, const char *from, const char *end)
{
    Utf8Reader reader({from, end});
    for (const Place &place : segment.places) {
        if (reader.atEnd() || !fits(place, nextFolded(reader))) {
            return nullptr;
        }
    }
    return reader.place();
}

// The next place where a match can begin, null without one.
const char *TextMatcher::nextStart(const Segment &segment, const char *from, const char *end)
{
    const char *found =
        std::find_if(from, end, [&](char c) { return segment.starts[static_cast<unsigned char>(c)]; });
    return found != end ? found : nullptr;
}

// Where the first match from `from` on ends; null without one. Leftmost is right for every segment but the
// last: a segment takes a fixed number of characters, so the earliest match leaves the most for those behind
// it.
const char *TextMatcher::find(const Segment &segment, const char *from, const char *end)
{
    if (segment.verbatim) {
        const std::string_view text(from, static_cast<size_t>(end - from));
        const size_t found = text.find(segment.bytes);
        return found == std::string_view::npos ? nullptr : from + found + segment.bytes.size();
    }
    while (from != end && (from = nextStart(segment, from, end)) != nullptr) {
        if (const char *matched = endOfMatch(segment, from, end)) {
            return matched;
        }
        Utf8Reader reader({from, end});
        reader.next();
        from = reader.place();
    }
    return nullptr;
}

bool TextMatcher::endsWith(const Segment &segment, const char *from, const char *end)
{
    for (Utf8Reader reader({from, end}); !segment.places.empty(); reader.next()) {
        if (endOfMatch(segment, reader.place(), end) == end) {
            return true;
        }
        if (reader.atEnd()) {
            return false;
        }
    }
    return true;
}

bool TextMatcher::matches(QByteArrayView text) const
{
    if (text.isNull()) {
        text = "";
    }
    const char *end = text.data() + text.size();
    const char *from = endOfMatch(m_segments.front(), text.data(), end);
    for (size_t i = 1; from != nullptr && i + 1 < m_segments.size(); ++i) {
        from = find(m_segments[i], from, end);
    }
    if (from == nullptr || m_segments.size() == 1) {
        return from == end;
    }
    return endsWith(m_segments.back(), from, end);
}

} // namespace store
