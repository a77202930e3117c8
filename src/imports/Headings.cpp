#include "imports/Headings.h"

#include "core/TextUtilities.h"
#include "customers/CustomerFields.h"
#include "language/Languages.h"
#include "language/ShownTexts.h"

#include <QHash>
#include <QRegularExpression>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace imports {

namespace {

/// What headings mean that are not the program's own captions: those that address books and spreadsheets
/// usually have. A meaning is a caption's key, or one of those that make up a person's name.
struct UsualHeadings
{
    QLatin1StringView meaning;
    QStringView headings; ///< parted by "|"
};

constexpr std::array usualHeadings{
    UsualHeadings{"Name"_L1, u"name|full name|display name|姓名|名字|名稱|名称|nombre|"
                             "nombre completo|nom|nom complet|nome|nome completo|imię i nazwisko|ad soyad|"
                             "adı soyadı|isim|이름|성명|tên|họ tên|họ và tên|الاسم|الاسم الكامل|שם|שם מלא"},
    UsualHeadings{"GivenName"_L1, u"first name|given name|forename|vorname|prénom|nombre de pila|imię|ad|adı|"
                                  "nome próprio|名|الاسم الأول|שם פרטי"},
    UsualHeadings{"FamilyName"_L1,
                  u"last name|family name|surname|nachname|apellido|apellidos|nom de famille|"
                  "nazwisko|soyad|soyadı|sobrenome|apelido|姓|성|họ|اسم العائلة|اللقب|שם משפחה"},
    UsualHeadings{"CustomerName"_L1,
                  u"company|company name|organization|organisation|organization name|"
                  "business name|account name|customer|client|firma|kunde|公司|公司名称|"
                  "公司名稱|单位|单位名称|單位|客户|客户名称|客戶|客戶名稱|empresa|razón social|"
                  "cliente|société|entreprise|raison sociale|klient|nazwa firmy|şirket|"
                  "firma adı|müşteri|회사|회사명|고객|고객명|công ty|tên công ty|khách hàng|"
                  "الشركة|اسم الشركة|العميل|חברה|שם החברה|לקוח"},
    UsualHeadings{"ContactPersonName"_L1, u"contact|contact name|kontakt|ansprechpartner|联系人姓名|contacto|"
                                          "kişi|liên hệ"},
    UsualHeadings{"CustomerID"_L1,
                  u"id|customer no|customer number|account number|client id|kundennummer|编号|"
                  "客户编号|編號|客戶編號|número de cliente|numéro client|numer klienta|"
                  "müşteri no|고객 번호|mã khách hàng|رقم العميل|מספר לקוח"},
    UsualHeadings{"PhoneNumbers"_L1,
                  u"phone|phones|telephone|tel|tel no|phone number|telephone number|"
                  "business phone|business phone 2|work phone|office phone|company main phone|"
                  "primary phone|main phone|phone value|other phone|telefon|telefonnummer|"
                  "电话|电话号码|联系电话|办公电话|固定电话|座机|電話|電話號碼|聯絡電話|teléfono|teléfonos|"
                  "téléphone|téléphones|tél|numéro de téléphone|telefone|numer telefonu|"
                  "telefon no|전화|전화번호|điện thoại|số điện thoại|هاتف|الهاتف|رقم الهاتف|"
                  "טלפון|מספר טלפון"},
    UsualHeadings{"Mobile"_L1,
                  u"mobile phone|mobile number|cell|cell phone|handy|手机|手机号|手机号码|手機|手機號碼|"
                  "行動電話|móvil|celular|portable|téléphone portable|telemóvel|telefon komórkowy|"
                  "komórka|cep|cep telefonu|휴대폰|휴대전화|di động|điện thoại di động|جوال|الجوال|"
                  "نقال|נייד|טלפון נייד"},
    UsualHeadings{"HomePhone"_L1, u"home phone 2|home telephone|住宅电话|家庭电话|住家電話|domicile"},
    UsualHeadings{"Fax"_L1, u"business fax|fax number|work fax|传真号码|télécopie|faks|faks no"},
    UsualHeadings{"Email"_L1,
                  u"email|email address|mail|email value|邮箱|电子邮箱|电子邮件|邮件|信箱|電子郵件|電郵|"
                  "correo|correo electrónico|courriel|adres email|eposta|이메일|전자우편|"
                  "thư điện tử|البريد الإلكتروني|דואל|דואר אלקטרוני|אימייל"},
    UsualHeadings{"OtherEmails"_L1,
                  u"email 2 address|email 3 address|email 2 value|email 3 value|other email"},
    UsualHeadings{"Address"_L1,
                  u"street|street address|business street|address street|mailing address|地址|"
                  "通讯地址|联系地址|通訊地址|dirección|calle|adresse|rue|morada|endereço|ulica|"
                  "adres|adresi|주소|địa chỉ|العنوان|כתובת|straße|strasse|anschrift"},
    UsualHeadings{"City"_L1, u"town|business city|address city|城市|ciudad|población|ville|cidade|localidade|"
                             "miasto|miejscowość|şehir|도시|thành phố|المدينة|עיר|ort|stadt"},
    UsualHeadings{"Province"_L1,
                  u"state|province|region|business state|address region|省|省份|provincia|estado|"
                  "département|województwo|bundesland|도|tỉnh|المحافظة|מחוז"},
    UsualHeadings{"PostalCode"_L1,
                  u"zip|zip code|postcode|business postal code|address postal code|邮编|邮政编码|"
                  "郵遞區號|código postal|code postal|kod pocztowy|posta kodu|우편번호|"
                  "mã bưu điện|الرمز البريدي|מיקוד|plz"},
    UsualHeadings{"CountryOrArea"_L1,
                  u"country|business country region|address country|国家|國家|país|pays|kraj|"
                  "ülke|국가|quốc gia|الدولة|البلد|מדינה|ארץ|land"},
    UsualHeadings{"Department"_L1, u"organization department|部门|部門|abteilung"},
    UsualHeadings{"WorkTitle"_L1, u"position|organization title|职务|职位|職稱|puesto|cargo|fonction|poste|"
                                  "stanowisko|unvan|직위|직책|chức vụ|المسمى الوظيفي|תפקיד|beruf"},
    UsualHeadings{"WebPage"_L1, u"website|homepage|url|web|website value|网址|网站|網址|sitio web|site web|"
                                "página web|strona www|web sitesi|홈페이지|trang web|الموقع|אתר"},
    UsualHeadings{"CustomerType"_L1, u"category|categories|kategorie|类别|分类|類別|categoría|catégorie"},
    UsualHeadings{"MaleFemale"_L1, u"gender|性别|性別|geschlecht"},
    UsualHeadings{"CustomerMemo"_L1,
                  u"notes|comment|comments|remark|remarks|description|memo|details|备注|说明|"
                  "備註|說明|notas|observaciones|nota|remarque|remarques|notes|observações|"
                  "uwagi|notatki|notlar|açıklama|비고|메모|ghi chú|ملاحظات|הערות|"
                  "bemerkung|bemerkungen|notiz|notizen"},
};

// Headings are compared by their letters and digits.
QString lettersOf(const QString &heading)
{
    QString letters;
    for (const QChar sign : heading.toCaseFolded().normalized(QString::NormalizationForm_C)) {
        if (sign.isLetterOrNumber() || sign.isMark()) {
            letters += sign;
        }
    }
    return letters;
}

QString withoutDigits(QString letters)
{
    static const QRegularExpression digits(u"\\d"_s);
    return letters.remove(digits);
}

QStringList captionKeys()
{
    QStringList keys{u"Telno"_s, u"SimpleDes"_s, u"DetailDes"_s, u"Note"_s};
    for (const customers::CustomerField &field : customers::customerFields()) {
        if (!field.labelKey.isEmpty()) {
            keys.append(field.labelKey);
        }
    }
    return keys;
}

// The program's own captions go before what is usual elsewhere, and the keys themselves before both.
QHash<QString, QString> meanings()
{
    QHash<QString, QString> found;
    for (const UsualHeadings &usual : usualHeadings) {
        for (const QStringView heading : usual.headings.split(u'|')) {
            found.insert(lettersOf(heading.toString()), usual.meaning);
        }
    }
    const QStringList keys = captionKeys();
    for (const language::Language &each : language::languages()) {
        const language::BuiltInTexts texts(each.code);
        for (const QString &key : keys) {
            if (const QString caption = lettersOf(texts.Lms(key)); !found.contains(caption)) {
                found.insert(caption, key);
            }
        }
    }
    for (const QString &key : keys) {
        found.insert(lettersOf(key), key);
    }
    return found;
}

QString meaningOf(const QString &heading)
{
    static const QHash<QString, QString> known = meanings();
    const QString letters = lettersOf(heading);
    const auto found = known.constFind(letters);
    return found != known.constEnd() ? *found : known.value(withoutDigits(letters));
}

// A name may come whole, in parts, or as one part with the other's heading missing its own word.
QStringList withWholeNames(QStringList found)
{
    const bool whole = found.contains("Name"_L1);
    const bool given = found.contains("GivenName"_L1);
    const bool family = found.contains("FamilyName"_L1);
    const bool company = found.contains("CustomerName"_L1);
    for (QString &meaning : found) {
        if (whole && given && family && (meaning == "GivenName"_L1 || meaning == "FamilyName"_L1)) {
            meaning.clear(); // the whole says it already
        } else if (meaning == "GivenName"_L1 || meaning == "FamilyName"_L1 ||
                   (meaning == "Name"_L1 && (company || given || family))) {
            meaning = u"ContactPersonName"_s;
        } else if (meaning == "Name"_L1) {
            meaning = u"CustomerName"_s;
        }
    }
    return found;
}

int fieldOfMeaning(const ListTarget &target, const QString &meaning)
{
    if (meaning.isEmpty()) {
        return -1;
    }
    for (int field = 0; field < target.fields.size(); ++field) {
        if (target.fields.at(field).captionKey.compare(meaning, Qt::CaseInsensitive) == 0) {
            return field;
        }
    }
    static const QHash<QString, QString> inPhoneBook{{u"PhoneNumbers"_s, u"Telno"_s},
                                                     {u"Mobile"_s, u"Telno"_s},
                                                     {u"HomePhone"_s, u"Telno"_s},
                                                     {u"CustomerName"_s, u"simpledes"_s},
                                                     {u"ContactPersonName"_s, u"simpledes"_s},
                                                     {u"CustomerMemo"_s, u"detaildes"_s},
                                                     {u"Note"_s, u"detaildes"_s}};
    static const QHash<QString, QString> amongCustomers{{u"Telno"_s, u"WorkPhones"_s},
                                                        {u"SimpleDes"_s, u"CustomerName"_s},
                                                        {u"DetailDes"_s, u"note"_s},
                                                        {u"Note"_s, u"note"_s}};
    return target.fieldOf((target.needsNumber ? inPhoneBook : amongCustomers).value(meaning));
}

bool looksLikeMail(const QString &cell)
{
    constexpr qsizetype longestMail = 254;
    static const QRegularExpression mail(u"^\\S+@\\S+\\.\\S+$"_s);
    return cell.size() <= longestMail && mail.match(cell.trimmed()).hasMatch();
}

bool looksLikeNumber(const QString &cell)
{
    static const QRegularExpression number(u"^[+0-9()/,;.\\s-]{5,}$"_s);
    static const QRegularExpression date(u"^\\d{4}-\\d\\d-\\d\\d|^\\d\\d?[./]\\d\\d?[./]\\d\\d"_s);
    return number.match(cell.trimmed()).hasMatch() && core::DigitsOnly(cell).size() >= 5 &&
           !date.match(cell.trimmed()).hasMatch();
}

bool looksLikeWords(const QString &cell)
{
    return std::ranges::any_of(cell, [](QChar sign) { return sign.isLetter(); }) && !looksLikeMail(cell);
}

template <typename Looks>
bool mostLook(const QList<QStringList> &rows, qsizetype from, qsizetype column, Looks looks)
{
    qsizetype filled = 0;
    qsizetype matching = 0;
    for (qsizetype row = from; row < rows.size(); ++row) {
        const QString cell = rows.at(row).value(column);
        filled += cell.trimmed().isEmpty() ? 0 : 1;
        matching += looks(cell) ? 1 : 0;
    }
    return matching > 0 && 3 * matching >= 2 * filled;
}

qsizetype widthOf(const QList<QStringList> &rows)
{
    qsizetype width = 0;
    for (const QStringList &row : rows) {
        width = std::max(width, row.size());
    }
    return width;
}

// The first column that looks so gets the field, unless another has it.
template <typename Looks>
void giveByLook(QList<int> &fields, int field, const QList<QStringList> &rows, qsizetype from, Looks looks)
{
    for (qsizetype column = 0; field >= 0 && !fields.contains(field) && column < fields.size(); ++column) {
        if (fields.at(column) < 0 && mostLook(rows, from, column, looks)) {
            fields[column] = field;
        }
    }
}

} // namespace

QList<int> fieldsOf(const ListTarget &target, bool hasHeadings, const QList<QStringList> &rows)
{
    QList<int> fields(widthOf(rows), -1);
    if (hasHeadings && !rows.isEmpty()) {
        QStringList found;
        for (const QString &heading : rows.first()) {
            found.append(meaningOf(heading));
        }
        found = withWholeNames(found);
        for (qsizetype column = 0; column < found.size(); ++column) {
            fields[column] = fieldOfMeaning(target, found.at(column));
        }
    }
    const qsizetype from = hasHeadings ? 1 : 0;
    giveByLook(fields, target.fieldOf(u"ContactPersonEmail"), rows, from, looksLikeMail);
    if (std::ranges::none_of(target.numbers, [&](int field) { return fields.contains(field); })) {
        giveByLook(fields, target.numbers.first(), rows, from, looksLikeNumber);
    }
    if (std::ranges::none_of(target.names, [&](int field) { return fields.contains(field); })) {
        giveByLook(fields, target.names.first(), rows, from, looksLikeWords);
    }
    return fields;
}

Guess guessOf(const ListTarget &target, ListKind kind, const QList<QStringList> &rows)
{
    bool hasHeadings = kind == ListKind::Cards;
    const QStringList first = rows.value(0);
    for (qsizetype column = 0; column < first.size(); ++column) {
        const QString &cell = first.at(column);
        const bool isValue = looksLikeNumber(cell) || looksLikeMail(cell);
        const bool headsValues =
            mostLook(rows, 1, column, looksLikeNumber) || mostLook(rows, 1, column, looksLikeMail);
        hasHeadings =
            hasHeadings || !meaningOf(cell).isEmpty() || (!isValue && headsValues && !cell.isEmpty());
    }
    return {hasHeadings, fieldsOf(target, hasHeadings, rows)};
}

} // namespace imports
