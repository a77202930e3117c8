#include "lookup/frmPopUp.h"

#include "appearance/Keys.h"
#include "appearance/ThemedIcons.h"
#include "core/TextUtilities.h"
#include "ui_frmPopUp.h"

#include <QKeyEvent>
#include <QPointer>
#include <QScreen>
#include <QStyle>

using namespace Qt::StringLiterals;

namespace lookup {

namespace {

constexpr int screenMargin = 16;
constexpr int contentLines = 4;

} // namespace

frmPopUp::frmPopUp(core::Navigator &navigator, const appearance::FormServices &services)
    : QWidget(nullptr, Qt::Tool | Qt::WindowStaysOnTopHint | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                           Qt::WindowCloseButtonHint),
      m_navigator(navigator), m_ui(std::make_unique<Ui::frmPopUp>()), m_setup(services)
{
    m_ui->setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setWindowIcon(appearance::programIcon());
    m_setup.load(*this, appearance::FormSetup::Place::OwnChoice);
    alignTexts();
    m_ui->txtContent->setFixedHeight(m_ui->txtContent->fontMetrics().lineSpacing() * contentLines + 12);
    connect(m_ui->Command1, &QPushButton::clicked, this, &QWidget::close);
    connect(m_ui->Command2, &QPushButton::clicked, this, &frmPopUp::editCaller);
}

frmPopUp::~frmPopUp()
{
    m_setup.unload();
}

// Fixed for each standing whatever the theme.
frmPopUp::CardColors frmPopUp::colorsOf(core::Standing standing) const
{
    const QColor icon = palette().color(QPalette::WindowText);
    switch (standing) {
    case core::Standing::BlackListed:
        return {Qt::black, Qt::white, u"ban", icon};
    case core::Standing::Vip:
        return {Qt::red, Qt::blue, u"star", icon};
    case core::Standing::Ordinary:
        break;
    }
    return {Qt::green, Qt::blue, u"person", icon};
}

// A label stands where its own text reads from; number and name belong beside the icon in any script.
void frmPopUp::alignTexts()
{
    const Qt::Alignment side = isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft;
    for (QLabel *label : {m_ui->lblCallerNumber, m_ui->lblCallerName}) {
        label->setAlignment(Qt::AlignAbsolute | Qt::AlignVCenter | side);
    }
    const int margin = int(m_ui->txtContent->document()->documentMargin());
    m_ui->txtAbout->setTextMargins(margin, 0, margin, 0);
}

void frmPopUp::showCaller(const PopUpView &view, const QWidget &mainWindow)
{
    m_view = view;
    fill(view);
    color(colorsOf(view.standing));
    const bool ours = !isVisible() || pos() == m_placed; // not where the operator has moved it
    adjustSize();
    if (ours) {
        place(mainWindow);
    }
    show();
    raise();
}

// It stays where it is, also where the notice makes it higher.
void frmPopUp::showAsEarlier()
{
    CardColors colors = colorsOf(m_view.standing);
    colors.ground = palette().color(QPalette::Disabled, QPalette::Base);
    colors.heading = QPalette::PlaceholderText; // pale, but to be read
    colors.text = palette().color(colors.heading);
    colors.iconColor = colors.text;
    color(colors);
    m_ui->lblBlackListNotice->setText(m_view.earlierNotice);
    m_ui->lblBlackListNotice->show();
}

void frmPopUp::fill(const PopUpView &view)
{
    m_ui->lblCallerNumber->setText(view.callerNumber);
    m_ui->lblCallerName->setText(view.callerName);
    m_ui->txtSN->setText(view.txtSN);
    m_ui->txtSnType->setText(view.txtSnType);
    m_ui->txtAbout->setText(view.txtAbout);
    m_ui->txtAbout->setCursorPosition(0);
    m_ui->txtContent->setPlainText(view.txtContent);
    m_ui->lblBlackListNotice->setText(view.lblBlackListNotice);
    m_ui->lblBlackListNotice->setVisible(view.standing != core::Standing::Ordinary);
}

void frmPopUp::followName(const QString &source, qint32 sn, const QString &name)
{
    if (m_ui->txtSnType->text() == source && core::leadingNumber(m_ui->txtSN->text()) == sn) {
        m_ui->txtAbout->setText(callerLine(m_ui->lblCallerNumber->text(), name));
        m_ui->txtAbout->setCursorPosition(0);
        m_ui->lblCallerName->setText(core::shownText(name));
    }
}

void frmPopUp::color(const CardColors &colors)
{
    QPalette card = palette();
    card.setColor(QPalette::Base, colors.ground);
    card.setColor(QPalette::Text, colors.text);
    m_ui->txtAbout->setPalette(card);
    m_ui->txtContent->setPalette(card);
    m_ui->lblCallerNumber->setForegroundRole(colors.heading);
    m_ui->lblCallerName->setForegroundRole(colors.heading);
    constexpr int iconSize = 48;
    m_ui->lblStandingIcon->setPixmap(
        appearance::themedPixmap(colors.icon, colors.iconColor, iconSize, devicePixelRatioF()));
}

void frmPopUp::place(const QWidget &mainWindow)
{
    const QRect free = mainWindow.screen()->availableGeometry();
    const int titleBar = style()->pixelMetric(QStyle::PM_TitleBarHeight);
    const QSize card = size() + QSize(screenMargin, screenMargin + titleBar);
    m_placed = free.bottomRight() - QPoint(card.width(), card.height());
    move(m_placed);
}

// While the editor asks something, the next caller may have come up on the card.
void frmPopUp::editCaller()
{
    const QPointer<frmPopUp> card(this);
    const QString number = m_ui->lblCallerNumber->text();
    m_navigator.Show_Editor(m_ui->txtSnType->text(), core::leadingNumber(m_ui->txtSN->text()));
    if (card && m_ui->lblCallerNumber->text() == number) {
        close();
    }
}

void frmPopUp::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape) {
        close();
    } else if (appearance::isEnter(*event)) {
        appearance::buttonOfEnter(*this, *m_ui->Command1).click();
    } else {
        QWidget::keyPressEvent(event);
    }
}

} // namespace lookup
