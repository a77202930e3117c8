#include "lookup/forms/frmPopUp.h"

#include "appearance/theme/Theme.h"
#include "appearance/theme/ThemedIcons.h"
#include "core/TextUtilities.h"
#include "ui_frmPopUp.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QScreen>
#include <QWindow>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace lookup {

namespace {

constexpr int cardWidth = 440;
constexpr int mostAboutLines = 3;
constexpr int mostContentLines = 4;

QRect onDesktop(const QWidget &widget)
{
    return {widget.mapToGlobal(QPoint()), widget.size()};
}

} // namespace

frmPopUp::frmPopUp(core::Navigator &navigator, const appearance::FormServices &services)
    : Form(services, Qt::Tool | Qt::WindowStaysOnTopHint | Qt::FramelessWindowHint), m_navigator(navigator),
      m_ui(std::make_unique<Ui::frmPopUp>())
{
    m_ui->setupUi(this);
    setAttribute(Qt::WA_ShowWithoutActivating);
    load(Place::OwnChoice);
    setFixedWidth(cardWidth);
    connect(qApp, &QGuiApplication::focusWindowChanged, this, &frmPopUp::giveWay);
    connect(m_ui->Command1, &QPushButton::clicked, this, &QWidget::close);
    connect(m_ui->Command2, &QPushButton::clicked, this, [this] {
        openAndClose([this] { return m_view.caller && m_navigator.Show_Editor(*m_view.caller); });
    });
    connect(m_ui->cmdNote, &QPushButton::clicked, this, [this] {
        openAndClose([this] { return m_view.caller && m_navigator.addNote(m_view.caller->sn); });
    });
}

frmPopUp::~frmPopUp() = default;

// The colours of a standing are given and do not follow the theme.
frmPopUp::CardColors frmPopUp::colorsOf(core::Standing standing) const
{
    switch (standing) {
    case core::Standing::BlackListed:
        return {Qt::black, Qt::white, u"ban"};
    case core::Standing::Vip:
        return {Qt::red, Qt::blue, u"star"};
    case core::Standing::Ordinary:
        break;
    }
    return {Qt::green, Qt::blue, u"person"};
}

void frmPopUp::showCaller(const CardView &view, const QWidget &mainWindow)
{
    m_view = view;
    ++m_shown;
    fill(view);
    color(colorsOf(view.standing));
    const bool moved = isVisible() && pos() != m_placed; // by the operator
    const bool stays = moved || isActiveWindow();        // he may move it just now
    adjustSize();
    move(stays ? raisedOntoScreen() : placeCard(size(), room(mainWindow)).topLeft());
    if (!moved) {
        m_placed = pos();
    }
    show();
    raise();
}

// The card keeps its place, even if the notice makes it higher.
void frmPopUp::showAsEarlier()
{
    const QColor pale = palette().color(QPalette::PlaceholderText); // but to be read
    color({palette().color(QPalette::Disabled, QPalette::Base), pale, colorsOf(m_view.standing).icon});
    m_ui->lblBlackListNotice->setText(m_view.earlierNotice);
    m_ui->lblBlackListNotice->show();
}

void frmPopUp::showAge(const QString &text)
{
    m_ui->lblAge->setText(text);
}

void frmPopUp::showNotes(const QString &text)
{
    m_ui->lblNotes->setText(text);
}

void frmPopUp::fill(const CardView &view)
{
    const bool isCustomer = core::isCustomer(view.caller);
    m_ui->txtSN->setText(view.caller ? QString::number(view.caller->sn) : QString());
    m_ui->txtSnType->setText(view.caller ? core::sourceOf(view.caller->table) : QString());
    showAbout(view.txtAbout);
    m_ui->lblCall->setText(view.callOnLine);
    m_ui->lblAge->clear();
    m_ui->lblNotes->clear();
    m_ui->lblNotes->setVisible(isCustomer);
    m_ui->cmdNote->setVisible(isCustomer);
    m_ui->txtContent->setPlainText(view.txtContent);
    m_ui->txtContent->fitHeight(cardWidth - 34, mostContentLines);
    for (QWidget *details :
         {static_cast<QWidget *>(m_ui->lblDetailDes), static_cast<QWidget *>(m_ui->txtContent)}) {
        details->setVisible(!view.txtContent.isEmpty());
    }
    m_ui->lblBlackListNotice->setText(view.lblBlackListNotice);
    m_ui->lblBlackListNotice->setVisible(view.standing != core::Standing::Ordinary);
}

void frmPopUp::showAbout(const QString &line)
{
    m_ui->txtAbout->setPlainText(line);
    m_ui->txtAbout->fitHeight(cardWidth - 18, mostAboutLines);
}

void frmPopUp::followName(core::RowKey caller, const QString &name)
{
    if (m_view.caller == caller) {
        showAbout(callerLine(m_view.callerNumber, name));
    }
}

// The words of the band are drawn on the given ground in black or white, whichever is easier to read.
void frmPopUp::color(const CardColors &colors)
{
    const bool onDark =
        appearance::contrast(colors.ground, Qt::white) > appearance::contrast(colors.ground, Qt::black);
    const QColor words = onDark ? Qt::white : Qt::black;
    QPalette band = palette();
    band.setColor(QPalette::Window, colors.ground);
    band.setColor(QPalette::WindowText, words);
    m_ui->band->setPalette(band);
    for (CallerText *text : {m_ui->txtAbout, m_ui->txtContent}) {
        text->setColors(colors.ground, colors.text);
    }
    constexpr int iconSize = 32;
    m_ui->lblStandingIcon->setPixmap(
        appearance::themedPixmap(colors.icon, words, iconSize, devicePixelRatioF()));
}

// The card's own place, but high enough for its buttons to be on the screen.
QPoint frmPopUp::raisedOntoScreen() const
{
    const QRect free = screen()->availableGeometry();
    const int lowest = std::max(free.top(), free.bottom() + 1 - height());
    return {x(), std::min(y(), lowest)};
}

CardRoom frmPopUp::room(const QWidget &mainWindow) const
{
    const QWidget *active = QApplication::activeWindow();
    if (active == nullptr || active == this) {
        return {.screen = mainWindow.screen()->availableGeometry(), .mirrored = isRightToLeft()};
    }
    CardRoom room{.screen = active->screen()->availableGeometry(),
                  .window = active->frameGeometry(),
                  .mirrored = isRightToLeft()};
    for (const QAbstractButton *button : active->findChildren<QAbstractButton *>()) {
        if (button->isVisible() && button->window() == active) {
            room.buttons.append(onDesktop(*button));
        }
    }
    const QRect &frame = room.window;
    room.buttons.append({frame.topLeft(), QPoint(frame.right(), active->geometry().top())}); // its title bar
    if (const QWidget *field = active->focusWidget(); field != nullptr && field->isVisible()) {
        room.field = onDesktop(*field);
    }
    return room;
}

// It stays where it stands unless it covers something there: a card that leaps about has to be looked for.
void frmPopUp::giveWay()
{
    const QWidget *active = QApplication::activeWindow();
    const bool moved = pos() != m_placed;
    if (active == nullptr || active == this || moved || !isVisible()) {
        return;
    }
    const CardRoom place = room(*active);
    if (isInTheWay(geometry(), place)) {
        move(placeCard(size(), place).topLeft());
        m_placed = pos();
    }
}

// While the window that opens asks something, the next call may come up on the card, perhaps from the same
// caller. Then the card stays open.
void frmPopUp::openAndClose(const std::function<bool()> &open)
{
    const QPointer<frmPopUp> card(this);
    const int shown = m_shown;
    const bool opened = open();
    if (opened && card && m_shown == shown) {
        close();
    }
}

// The card has no title bar, so it is moved by every part of it that is no control.
void frmPopUp::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && windowHandle() != nullptr) {
        windowHandle()->startSystemMove();
    }
}

void frmPopUp::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawRect(rect() - QMargins(0, 0, 1, 1));
}

} // namespace lookup
