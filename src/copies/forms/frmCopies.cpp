#include "copies/forms/frmCopies.h"

#include "ui_frmCopies.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace copies {

namespace {

constexpr std::array columnWidths{20, 22, 12, 12, 20}; // in characters

} // namespace

frmCopies::frmCopies(const appearance::FormContext &context, CopyKeeper &keeper, LookInto lookInto)
    : Form(context.services), m_context(context), m_keeper(keeper), m_lookInto(std::move(lookInto)),
      m_copies(context.texts), m_ui(std::make_unique<Ui::frmCopies>())
{
    m_ui->setupUi(this);
    load();
    setUpGrid();
    connectButtons();
    m_ui->txtFolder->setText(QDir::toNativeSeparators(m_keeper.folder()));
    showCopies();
    m_ui->lstCopies->setFocus();
}

frmCopies::~frmCopies() = default;

void frmCopies::setUpGrid()
{
    appearance::RecordGrid &grid = *m_ui->lstCopies;
    grid.setModel(&m_copies);
    grid.setHint(m_context.texts.Lms(u"NoCopies"_s));
    grid.setWidths(columnWidths);
    grid.remember(m_context.services.windows, u"frmCopies.lstCopies"_s);
    connect(&grid, &appearance::RecordGrid::currentRowChanged, this, &frmCopies::offerCommands);
    connect(&grid, &appearance::RecordGrid::recordActivated, m_ui->cmdLookInto, &QPushButton::click);
}

void frmCopies::connectButtons()
{
    connect(m_ui->cmdCopyNow, &QPushButton::clicked, &m_keeper, &CopyKeeper::copyNow);
    connect(m_ui->cmdRestore, &QPushButton::clicked, this,
            [this] { withCurrent([this](const Copy &copy) { m_keeper.restore(copy); }); });
    connect(m_ui->cmdLookInto, &QPushButton::clicked, this, [this] { withCurrent(m_lookInto); });
    connect(m_ui->cmdUseFolder, &QPushButton::clicked, this, [this] {
        m_keeper.choose(m_ui->txtFolder->text());
        m_ui->txtFolder->setText(QDir::toNativeSeparators(m_keeper.folder()));
    });
    connect(m_ui->cmdReturn, &QPushButton::clicked, this, &QWidget::close);
    connect(&m_keeper, &CopyKeeper::changed, this, &frmCopies::showCopies);
    offerHelp(m_context.navigator, u"Popup_Copies"_s, {m_ui->cmdHelp});
}

// Of the one that it is about: the list may be read anew while a question stands.
void frmCopies::withCurrent(const std::function<void(const Copy &)> &command)
{
    if (const Copy *current = m_copies.at(m_ui->lstCopies->currentIndex().row())) {
        const Copy copy = *current;
        command(copy);
    }
}

// Stands on the copy that it stood on, or else on the last one.
void frmCopies::showCopies()
{
    const QList<Copy> all = m_keeper.copies();
    const Copy *current = m_copies.at(m_ui->lstCopies->currentIndex().row());
    const auto stood =
        std::ranges::find(all, current != nullptr ? current->folder : QString(), &Copy::folder);
    const qsizetype row = stood != all.end() ? std::distance(all.begin(), stood) : 0;
    m_copies.setCopies(all);
    m_ui->lstCopies->setCurrentIndex(m_copies.index(int(row), 0));
    m_ui->lblMessage->setText(m_keeper.isBusy() ? m_context.texts.Lms(u"CopyRuns"_s) : QString());
    offerCommands();
}

void frmCopies::offerCommands()
{
    const Copy *copy = m_copies.at(m_ui->lstCopies->currentIndex().row());
    const bool isWhole = copy != nullptr && copy->isWhole;
    const bool isIdle = !m_keeper.isBusy();
    const QString customers = QFileInfo(m_context.paths.CustomerFile).fileName();
    for (const auto &[button, isOffered] :
         {std::pair(m_ui->cmdLookInto, isWhole && copy->file(customers) != nullptr),
          {m_ui->cmdRestore, isWhole && isIdle},
          {m_ui->cmdCopyNow, isIdle},
          {m_ui->cmdUseFolder, isIdle}}) {
        if (!isOffered && button->hasFocus()) { // it would hand the keyboard on to any other
            m_ui->lstCopies->setFocus();
        }
        button->setEnabled(isOffered);
    }
}

} // namespace copies
