#include "language/forms/Captions.h"

#include <QAbstractButton>
#include <QAction>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QTabBar>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace language {

namespace {

constexpr int keyRole = Qt::UserRole + 4096; // beside the roles that forms use for themselves

// The designed text: `present` at the first translation, from then on what was kept of it in a property.
QString designedText(QObject &owner, const char *property, const QString &present)
{
    const QVariant kept = owner.property(property);
    if (!kept.isValid() && !present.isEmpty()) {
        owner.setProperty(property, present);
    }
    return kept.isValid() ? kept.toString() : present;
}

// True for the button of a toolbar, which takes its texts from its action, and for those of a tab bar, which
// the toolkit names.
bool isNamedAlready(const QWidget &widget)
{
    const auto *button = qobject_cast<const QToolButton *>(&widget);
    return button != nullptr &&
           (button->defaultAction() != nullptr || qobject_cast<const QTabBar *>(button->parent()) != nullptr);
}

} // namespace

QString withoutMnemonic(const QString &text)
{
    QString plain;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const QStringView rest = QStringView(text).sliced(at);
        if (rest.startsWith("(&"_L1) && rest.size() == 4 && rest.endsWith(u')')) {
            break; // the East Asian way to add a mnemonic
        }
        if (rest.startsWith(u'&') && rest.size() > 1) {
            ++at;
        }
        plain += text.at(at);
    }
    return plain;
}

QString Captions::text(const QString &designed) const
{
    const QString found = m_texts.Lms(withoutMnemonic(designed));
    return found.isEmpty() ? designed : found;
}

QString Captions::plain(const QString &designed) const
{
    const QString found = m_texts.Lms(withoutMnemonic(designed));
    return found.isEmpty() ? designed : withoutMnemonic(found); // "Smith & Sons" is no key and keeps its mark
}

void Captions::translateTitle(QWidget &window) const
{
    window.setWindowTitle(plain(designedText(window, "titleKey", window.windowTitle())));
}

void Captions::translate(QObject &part) const
{
    if (auto *action = qobject_cast<QAction *>(&part)) {
        translateAction(*action);
    } else if (auto *widget = qobject_cast<QWidget *>(&part); widget != nullptr && !isNamedAlready(*widget)) {
        translateTip(*widget);
        translateControl(*widget);
    }
}

void Captions::translateTip(QWidget &widget) const
{
    if (const QString tip = designedText(widget, "tipKey", widget.toolTip()); !tip.isEmpty()) {
        widget.setToolTip(plain(tip));
    }
    if (const QString name = designedText(widget, "accessibleKey", widget.accessibleName());
        !name.isEmpty()) {
        widget.setAccessibleName(plain(name));
    }
}

void Captions::translateControl(QWidget &widget) const
{
    if (auto *button = qobject_cast<QAbstractButton *>(&widget)) {
        button->setText(text(designedText(*button, "captionKey", button->text())));
    } else if (auto *label = qobject_cast<QLabel *>(&widget)) {
        translateLabel(*label);
    } else if (auto *frame = qobject_cast<QGroupBox *>(&widget)) {
        frame->setTitle(text(designedText(*frame, "captionKey", frame->title())));
    } else if (auto *tabs = qobject_cast<QTabBar *>(&widget)) {
        translateTabs(*tabs);
    } else if (auto *list = qobject_cast<QListWidget *>(&widget)) {
        translateItems(*list);
    } else if (const auto *header = qobject_cast<QHeaderView *>(&widget)) {
        translateHeadings(*header);
    }
}

// This translates menus, too: a menu's title is the text of its own action. Qt derives the words on a toolbar
// and the tip from the text; only where they are worded differently have they keys of their own.
void Captions::translateAction(QAction &action) const
{
    const QString tip = plain(designedText(action, "tipKey", action.toolTip()));
    const QString designed = designedText(action, "captionKey", action.text());
    if (!designed.isEmpty()) {
        action.setText(text(designed));
        if (const QString word = plain(designed); action.iconText() != word) {
            action.setIconText(word);
        }
    }
    if (action.toolTip() != tip) {
        action.setToolTip(tip);
    }
}

void Captions::translateLabel(QLabel &label) const
{
    label.setTextFormat(Qt::PlainText);
    const QString designed = designedText(label, "captionKey", label.text());
    if (designed.isEmpty()) {
        return; // a picture, or a result that is yet to come
    }
    // Only a label with a buddy underlines its mnemonic; any other would show the "&".
    label.setText(label.buddy() != nullptr ? text(designed) : plain(designed));
}

void Captions::translateTabs(QTabBar &tabs) const
{
    for (int tab = 0; tab < tabs.count(); ++tab) {
        if (!tabs.tabData(tab).isValid()) {
            tabs.setTabData(tab, tabs.tabText(tab));
        }
        tabs.setTabText(tab, text(tabs.tabData(tab).toString()));
    }
}

void Captions::translateItems(QListWidget &list) const
{
    for (int row = 0; row < list.count(); ++row) {
        QListWidgetItem &item = *list.item(row);
        if (!item.data(keyRole).isValid()) {
            item.setData(keyRole, item.text());
        }
        item.setText(plain(item.data(keyRole).toString()));
    }
}

// A model that looks its headings up by itself refuses the key and is left alone. So are headings that are
// mere numbers.
void Captions::translateHeadings(const QHeaderView &header) const
{
    QAbstractItemModel *model = header.model();
    const int sections = header.orientation() == Qt::Horizontal ? header.count() : 0;
    for (int section = 0; section < sections; ++section) {
        QVariant key = model->headerData(section, Qt::Horizontal, keyRole);
        if (!key.isValid()) {
            key = model->headerData(section, Qt::Horizontal, Qt::DisplayRole);
        }
        if (key.typeId() == QMetaType::QString &&
            model->setHeaderData(section, Qt::Horizontal, key, keyRole)) {
            model->setHeaderData(section, Qt::Horizontal, plain(key.toString()), Qt::DisplayRole);
        }
    }
}

} // namespace language
