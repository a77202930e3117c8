#include "messages/forms/frmShowSMS.h"

#include "core/TextUtilities.h"
#include "ui_frmShowSMS.h"

#include <QApplication>
#include <QScreen>
#include <QStyle>

using namespace Qt::StringLiterals;

namespace messages {

namespace {

constexpr int screenMargin = 16;

// The beginning of `text` that is shown as one line; its line end is the character behind it.
QStringView nextLine(QStringView text, bool breaksLines)
{
    constexpr qsizetype pieceLength = 1000;
    const qsizetype lineEnd = breaksLines ? text.indexOf(u'\n') : -1;
    qsizetype length = std::min(lineEnd < 0 ? text.size() : lineEnd, pieceLength);
    if (length < text.size() && text[length].isLowSurrogate()) {
        --length;
    }
    return text.first(length);
}

// The text in lines that a box can lay out quickly: a long line is shown in pieces, and very many lines run
// on without breaks. Nothing is left out.
QString shownLines(QStringView text)
{
    constexpr qsizetype mostLines = 2000;
    QStringList shown;
    while (!text.isEmpty()) {
        const bool breaksLines = shown.size() < mostLines;
        const QStringView line = nextLine(text, breaksLines);
        text = text.sliced(line.size());
        if (breaksLines && text.startsWith(u'\n')) {
            text = text.sliced(1);
        }
        shown.append(core::shownText(line.chopped(line.endsWith(u'\r') ? 1 : 0), line.size()));
    }
    return shown.join(u'\n');
}

} // namespace

frmShowSMS::frmShowSMS(const appearance::FormContext &context, Inbox &inbox, std::function<void()> seen)
    : Form(context.services, Qt::Window | Qt::WindowStaysOnTopHint), m_context(context), m_inbox(inbox),
      m_seen(std::move(seen)), m_ui(std::make_unique<Ui::frmShowSMS>())
{
    m_ui->setupUi(this);
    setAttribute(Qt::WA_ShowWithoutActivating);
    load();
    if (context.services.windows.geometry(objectName()).isEmpty()) {
        place();
    }
    connect(m_ui->Command1, &QPushButton::clicked, this, &QWidget::close);
    connect(m_ui->cmdPrevious, &QPushButton::clicked, this, [this] { page(-1); });
    connect(m_ui->cmdNext, &QPushButton::clicked, this, [this] { page(1); });
    offerHelp(m_context.navigator, u"Popup_Messages"_s);
}

frmShowSMS::~frmShowSMS() = default;

// Places the form in a corner, away from what the operator types, and not in the corner of the caller's card.
void frmShowSMS::place()
{
    const QRect free = screen()->availableGeometry();
    const int titleBar = style()->pixelMetric(QStyle::PM_TitleBarHeight);
    move(free.left() + screenMargin, free.bottom() - height() - titleBar - screenMargin);
}

void frmShowSMS::showMessages()
{
    fill();
    if (isMinimized()) { // bringing it back from there would take the keyboard, showing it anew does not
        hide();
        setWindowState(windowState() & ~Qt::WindowMinimized);
    }
    show();
    raise();
    QApplication::alert(this);
    if (isActiveWindow()) {
        markSeen();
    }
}

void frmShowSMS::fill()
{
    const Inbox::Message &message = m_inbox.current();
    m_ui->lblReceived->setText(core::isolated(message.time));
    if (m_shown != message.text || m_ui->txtSMS->document()->isEmpty()) {
        m_shown = message.text;
        m_ui->txtSMS->setPlainText(shownLines(m_shown));
    }
    m_ui->lblNotFiled->setVisible(message.filing != Filing::Works);
    m_ui->lblNotFiled->setText(m_context.texts.Lms(filingKey(message.filing)));
    m_ui->lblPlace->setText(u"%1 / %2"_s.arg(m_inbox.place() + 1).arg(m_inbox.count()));
    m_ui->cmdPrevious->setEnabled(m_inbox.place() > 0);
    m_ui->cmdNext->setEnabled(m_inbox.place() + 1 < m_inbox.count());
}

void frmShowSMS::page(int messages)
{
    m_inbox.page(messages);
    fill();
    markSeen();
}

void frmShowSMS::markSeen()
{
    m_inbox.markSeen();
    m_seen();
}

// When the operator turns to the window, its message counts as read.
bool frmShowSMS::event(QEvent *event)
{
    if (event->type() == QEvent::WindowActivate && !m_inbox.isEmpty()) {
        markSeen();
    }
    return Form::event(event);
}

} // namespace messages
