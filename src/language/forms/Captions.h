#pragma once

#include "core/TextLookup.h"

#include <QString>

class QAction;
class QHeaderView;
class QLabel;
class QListWidget;
class QObject;
class QTabBar;
class QWidget;

namespace language {

/// A text without its mnemonic mark: "&Edit" gives "Edit", a trailing "(&E)" is dropped whole, "&&" gives
/// "&".
QString withoutMnemonic(const QString &text);

/// Translates the texts of single controls. The designed texts are the keys; they are kept beside the
/// controls, so that a later translation starts from them again. A text whose lookup is empty is shown as
/// designed.
class Captions
{
public:
    explicit Captions(const core::TextLookup &texts) : m_texts(texts) {}

    void translateTitle(QWidget &window) const;
    /// A control with its tip and accessible name, or an action; any other object is left alone.
    void translate(QObject &part) const;

private:
    QString text(const QString &designed) const;
    QString plain(const QString &designed) const;
    void translateTip(QWidget &widget) const;
    void translateControl(QWidget &widget) const;
    void translateAction(QAction &action) const;
    void translateLabel(QLabel &label) const;
    void translateTabs(QTabBar &tabs) const;
    void translateItems(QListWidget &list) const;
    void translateHeadings(const QHeaderView &header) const;

    const core::TextLookup &m_texts;
};

} // namespace language
