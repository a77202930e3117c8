#include "language/forms/FormTranslator.h"

#include "language/forms/Captions.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontInfo>
#include <QMenu>
#include <QPlainTextEdit>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace language {

namespace {

// Visits every control and action of a form, its menus included, but not the other windows that it owns.
template <typename Visit>
void forEachPart(const QObject &whole, const Visit &visit)
{
    const QObjectList parts = whole.children(); // NOLINT: a copy, since setting a text may add children
    for (QObject *part : parts) {
        const auto *widget = qobject_cast<QWidget *>(part);
        if (widget != nullptr && widget->isWindow() && qobject_cast<QMenu *>(part) == nullptr) {
            continue;
        }
        visit(*part);
        forEachPart(*part, visit);
    }
}

// The given sizes, eight points mostly, are tiny on today's screens: they are only the least size.
QFont formFont(const FontChoice &choice)
{
    QFont font = QApplication::font();
    font.setPointSizeF(std::max<qreal>(choice.pointSize, QFontInfo(font).pointSizeF()));
    const QStringList families = choice.families();
    const auto installed = std::find_if(families.begin(), families.end(), [](const QString &family) {
        return QFontDatabase::hasFamily(family);
    });
    if (installed != families.end()) {
        font.setFamilies({*installed});
    }
    return font;
}

QFont controlFont(const QWidget &control, QFont font)
{
    const double scale = control.property("fontScale").toDouble();
    if (scale > 0) {
        font.setPointSizeF(font.pointSizeF() * scale);
    }
    font.setBold(control.property("fontBold").toBool());
    return font;
}

// Unlike every other control, these boxes do not mirror their lines by themselves. Some, a log for instance,
// are designed for one direction and keep it, whatever letter a line begins with.
void alignLines(const QPlainTextEdit &box)
{
    QTextOption option = box.document()->defaultTextOption();
    option.setAlignment(box.isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft);
    if (box.testAttribute(Qt::WA_SetLayoutDirection)) {
        option.setTextDirection(box.layoutDirection());
    }
    box.document()->setDefaultTextOption(option);
}

} // namespace

void FormTranslator::iniFormFonts(QWidget &form) const
{
    m_log.trapAs("iniFormFonts: "_L1, [&] {
        const QFont font = formFont(m_language.font);
        form.setFont(font); // most controls have it by this already
        forEachPart(form, [&font](QObject &part) {
            auto *control = qobject_cast<QWidget *>(&part);
            if (control == nullptr || control->isWindow()) {
                return;
            }
            const QFont wanted = controlFont(*control, font);
            if (control->font() != wanted) {
                control->setFont(wanted);
            }
        });
    });
}

void FormTranslator::iniFormLang(QWidget &form) const
{
    m_log.trap("iniFormLang"_L1, [&] {
        const Captions captions(m_texts);
        form.setLayoutDirection(layoutDirection(m_language.code));
        captions.translateTitle(form);
        captions.translate(form);
        forEachPart(form, [&captions](QObject &part) {
            captions.translate(part);
            if (const auto *box = qobject_cast<QPlainTextEdit *>(&part)) {
                alignLines(*box);
            }
        });
    });
}

} // namespace language
