#include "language/Languages.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace language {

namespace {

constexpr int size = 9;

// The names of fonts are written as code points, so that no editor can spoil them. Without a family of its
// own region, Chinese text may be drawn with Japanese letter shapes. Arabic takes a locale that writes dates
// in the digits of the date boxes. Of Qt's Portuguese translations only the Brazilian one is complete, and
// there is no Vietnamese one.
const QList<Language> table = {
    {.code = u"ENG"_s,
     .ownName = u"English"_s,
     .systemIds = {0x09},
     .textColumn = u"ENG"_s,
     .locale = u"en_US"_s},
    {.code = u"CHS"_s,
     .ownName = u"简体中文"_s,
     .systemIds = {0x0804},
     .textColumn = u"CHS"_s,
     .locale = u"zh_CN"_s,
     .toolkitFile = u"qtbase_zh_CN"_s,
     .font = {134, u"\u5B8B\u4F53"_s, size, {u"Noto Sans CJK SC"_s, u"WenQuanYi Micro Hei"_s}},
     .separatesWords = false},
    {.code = u"CHT"_s,
     .ownName = u"繁體中文"_s,
     .systemIds = {0x0404, 0x0C04, 0x1004, 0x1404}, // Singapore writes simplified, but was always served so
     .textColumn = u"CHT"_s,
     .locale = u"zh_TW"_s,
     .toolkitFile = u"qtbase_zh_TW"_s,
     .font = {136, u"\u65B0\u7D30\u660E\u9AD4"_s, size, {u"Noto Sans CJK TC"_s, u"AR PL UMing TW"_s}},
     .separatesWords = false},
    {.code = u"SPN"_s,
     .ownName = u"Español"_s,
     .systemIds = {0x0A},
     .locale = u"es_ES"_s,
     .toolkitFile = u"qtbase_es"_s},
    {.code = u"ARA"_s,
     .ownName = u"العربية"_s,
     .systemIds = {0x01},
     .locale = u"ar_AE"_s,
     .toolkitFile = u"qtbase_ar"_s,
     .font = {178, {}, size},
     .rightToLeft = true},
    {.code = u"FRN"_s,
     .ownName = u"Français"_s,
     .systemIds = {0x0C},
     .locale = u"fr_FR"_s,
     .toolkitFile = u"qtbase_fr"_s},
    {.code = u"HBR"_s,
     .ownName = u"עברית"_s,
     .systemIds = {0x0D},
     .locale = u"he_IL"_s,
     .toolkitFile = u"qtbase_he"_s,
     .font = {177, {}, size},
     .rightToLeft = true},
    {.code = u"TUK"_s,
     .ownName = u"Türkçe"_s,
     .systemIds = {0x1F},
     .locale = u"tr_TR"_s,
     .toolkitFile = u"qtbase_tr"_s,
     .font = {162, {}, size}},
    {.code = u"KOR"_s,
     .ownName = u"한국어"_s,
     .systemIds = {0x12},
     .locale = u"ko_KR"_s,
     .toolkitFile = u"qtbase_ko"_s,
     .font = {129, u"\uAD74\uB9BC"_s, size, {u"Noto Sans CJK KR"_s, u"NanumGothic"_s}}},
    {.code = u"POL"_s,
     .ownName = u"Polski"_s,
     .systemIds = {0x15},
     .locale = u"pl_PL"_s,
     .toolkitFile = u"qtbase_pl"_s},
    {.code = u"PTG"_s, .ownName = u"Português"_s, .systemIds = {0x16}, .locale = u"pt_PT"_s},
    {.code = u"VN"_s,
     .ownName = u"Tiếng Việt"_s,
     .systemIds = {0x2A},
     .locale = u"vi_VN"_s,
     .font = {163, {}, size}},
    {.code = u"ID"_s, .textColumn = u"id"_s},
};

// Of a system's language that has no texts yet.
const FontChoice japanese = {
    128, u"\uFF2D\uFF33\u0020\uFF30\u30B4\u30B7\u30C3\u30AF"_s, size, {u"Noto Sans CJK JP"_s}};

} // namespace

const QList<Language> &languages()
{
    return table;
}

const Language *languageOf(const QString &code)
{
    const auto found = std::ranges::find(languages(), code, &Language::code);
    return found != languages().cend() ? &*found : nullptr;
}

FontChoice fontChoice(const QString &code)
{
    const Language *language = languageOf(code);
    return language ? language->font : code == "JAPANESE"_L1 ? japanese : FontChoice();
}

} // namespace language
