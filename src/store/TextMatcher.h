#pragma once

#include "store/SqlTokens.h"
#include "store/Utf8.h"

#include <QByteArrayView>

#include <array>
#include <string>
#include <utility>
#include <vector>

namespace store {

/// A like-pattern made ready to be held against many texts. Case does not count in any script (see
/// CaseFolding). A "[" that nothing closes stands for itself. Works on UTF-8 as the engine hands it over,
/// without making a QString.
class TextMatcher
{
public:
    TextMatcher(QByteArrayView pattern, Wildcards wildcards);

    bool matches(QByteArrayView text) const;

private:
    /// One place of a pattern: what a single character of the text may be.
    struct Place
    {
        enum class Kind { Same, Any, Digit, OneOf, NoneOf };
        Kind kind = Kind::Same;
        char32_t folded = 0;
        std::vector<std::pair<char32_t, char32_t>> ranges; ///< folded, for OneOf and NoneOf
    };
    /// What stands between two runs of anything.
    struct Segment
    {
        std::vector<Place> places;
        bool verbatim = true;           ///< no place has more than one spelling: a search for `bytes` will do
        std::string bytes;              ///< the characters as they stand, of use when verbatim
        std::array<bool, 256> starts{}; ///< the bytes with which a match can begin
    };

    void parse(Utf8Reader pattern, Wildcards wildcards);
    static bool parseClass(Utf8Reader &pattern, Segment &segment);
    static void add(Segment &segment, Place place);
    static void addCharacter(Segment &segment, char32_t c, QByteArrayView bytes);
    static void prepare(Segment &segment);
    static bool fits(const Place &place, char32_t folded);
    static const char *endOfMatch(const Segment &segment, const char *from, const char *end);
    static const char *nextStart(const Segment &segment, const char *from, const char *end);
    static const char *find(const Segment &segment, const char *from, const char *end);
    static bool endsWith(const Segment &segment, const char *from, const char *end);

    std::vector<Segment> m_segments; ///< one more than there are runs
};

} // namespace store
