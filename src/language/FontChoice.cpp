#include "language/FontChoice.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace language {

namespace {

constexpr int simplifiedChinese = 134;
constexpr int traditionalChinese = 136;
constexpr int japanese = 128;
constexpr int korean = 129;

} // namespace

FontChoice fontChoice(const QString &languageCode)
{
    constexpr int size = 9;
    // By code points: the fonts are installed under exactly these names, whatever an editor does to this
    // file.
    const QHash<QString, FontChoice> choices = {
        {u"CHS"_s, {simplifiedChinese, u"\u5B8B\u4F53"_s, size}},
        {u"CHT"_s, {traditionalChinese, u"\u65B0\u7D30\u660E\u9AD4"_s, size}},
        {u"JAPANESE"_s, {japanese, u"\uFF2D\uFF33\u0020\uFF30\u30B4\u30B7\u30C3\u30AF"_s, size}},
        {u"KOR"_s, {korean, u"\uAD74\uB9BC"_s, size}},
        {u"ARA"_s, {178, {}, size}},
        {u"HBR"_s, {177, {}, size}},
        {u"TUK"_s, {162, {}, size}},
        {u"VN"_s, {163, {}, size}},
    };
    return choices.value(languageCode, {1, u"Arial"_s, 8});
}

QStringList fontFamilies(const FontChoice &choice)
{
    // Without a family of its own region, Chinese text may be drawn with Japanese letter shapes.
    static const QHash<int, QStringList> regional = {
        {simplifiedChinese, {u"Noto Sans CJK SC"_s, u"WenQuanYi Micro Hei"_s}},
        {traditionalChinese, {u"Noto Sans CJK TC"_s, u"AR PL UMing TW"_s}},
        {japanese, {u"Noto Sans CJK JP"_s}},
        {korean, {u"Noto Sans CJK KR"_s, u"NanumGothic"_s}},
    };
    QStringList families = regional.value(choice.characterSet);
    if (!choice.fontName.isEmpty()) {
        families.prepend(choice.fontName);
    }
    return families;
}

} // namespace language
