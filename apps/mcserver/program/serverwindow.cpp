// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/program/serverwindow.h>

#include <apps/common/listenaddress.h>
#include <apps/common/systemuser.h>
#include <apps/mcserver/log/serverlog.h>
#include <apps/pages/altkeys.h>
#include <apps/pages/configpage.h>
#include <apps/pages/displaypages.h>
#include <apps/pages/helpmenu.h>
#include <apps/pages/holders.h>
#include <apps/pages/mpxorvlistpage.h>
#include <apps/pages/pagehelp.h>
#include <apps/pages/question.h>
#include <apps/pages/scrolledpage.h>
#include <apps/pages/severitylook.h>
#include <apps/pages/shiftguard.h>
#include <apps/pages/undobar.h>

#include <devicecontrol/multichannelserver/common/mcskeys.h>

#include <platform/vtclient/vtserver.h>
#include <platform/widgets/useredit.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QTimer>
#include <QtGui/QCloseEvent>
#include <QtWidgets/QAction>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QStyle>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QVBoxLayout>

#include <chrono>
#include <vector>

namespace {

constexpr std::chrono::milliseconds ClientsInterval(500);  // between two looks

std::vector<pagehelp::Text> OwnHelp() {
    return {
        {"Status", QT_TRANSLATE_NOOP("PageHelp", "What the server and its device do.")},
        {"MpxORVs",
         QT_TRANSLATE_NOOP("PageHelp",
                           "All MpxORVs, the job master on top. A click on a title sorts, Ctrl+F filters. "
                           "Below are the comment and the policies of the one that is chosen.")},
        {"Suppression",
         QT_TRANSLATE_NOOP("PageHelp",
                           "The data modules that tell which ground transmitters are on the air. Modules are "
                           "changed by a right click on them, their inputs by typing below. \"What it does\" "
                           "shows which frequencies are blanked now, and who is tuned to one all the same.")},
    };
}

}  // namespace

ServerWindow::ServerWindow(const QString& name, const VtServer& listener, ServerLog& log)
    : m_listener(listener),
      m_log(log),
      m_title(tr("Multi-channel server: %1").arg(name)),
      m_tabs(new QTabWidget(this)),
      m_undo(new UndoBar(m_clock, this)),
      m_layout(nullptr),
      m_address(new QLabel(this)),
      m_clients(new QLabel(this)),
      m_shownClients(*this, [this] { ShowClients(); }) {
    setObjectName(QStringLiteral("ServerWindow"));
    new AltKeys(this);
    // What is done at a window of this process is told like what clients do: with who did it.
    m_log.SetLocalActor({ECode::AtServerWindow, {SystemUser()}}, &UserEdit::IsUnderWay);
    ShowState(ESeverity::Ok, QString());
    resize(960, 740);  // names of inputs have room, and it fits a small screen
    m_tabs->setObjectName(QStringLiteral("Pages"));
    m_tabs->setDocumentMode(true);
    auto* const content = new QWidget(this);
    m_layout = new QVBoxLayout(content);
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(0);
    m_layout->addWidget(m_tabs, 1);
    new ShiftGuard(m_clock, *m_tabs);
    m_layout->addWidget(m_undo);  // below, so that what is on the pages stays where it is
    setCentralWidget(content);
    BuildMenus();
    AddPage(new StatusPage, "Status", tr("Status"));
    AddPage(new ConfigPage, "Configuration", tr("Configuration"));
    AddPage(new CommandsPage, "Commands", tr("Commands"));
    AddPage(new LogPage, "Log", tr("Log"));
    AddPage(new MpxOrvListPage, "MpxORVs", tr("MpxORVs"));

    const QString where = ListenAddress{m_listener.GetAddress(), m_listener.GetPort()}.ToText();
    m_address->setTextFormat(Qt::PlainText);
    m_address->setText(tr("Listening on %1").arg(where));
    m_clients->setObjectName(QStringLiteral("Clients"));
    statusBar()->addWidget(m_address, 1);
    statusBar()->addPermanentWidget(m_clients);
    auto* const timer = new QTimer(this);
    connect(timer, &QTimer::timeout, &m_shownClients, &WhenSeen::Refresh);
    timer->start(ClientsInterval);
    ShowClients();
}

ServerWindow::~ServerWindow() {
    m_log.SetLocalActor(CodedText(), nullptr);
    delete centralWidget();  // what is in it uses the clock
}

void ServerWindow::AddPage(Page* page, const char* name, const QString& title) {
    connect(page, &Page::Acted, m_undo, &UndoBar::Offer);
    page->Bind(mcskeys::Root, AllSegments);
    ScrolledPage::AddTo(*m_tabs, page, QString::fromLatin1(name), title);
    pagehelp::Describe(*m_tabs, OwnHelp());
    const int index = m_tabs->count() - 1;
    QAction* const go = m_pages->addAction(title, this, [this, index] { m_tabs->setCurrentIndex(index); });
    go->setShortcut(ScrolledPage::KeyOfPage(index));
    resize(size().expandedTo(sizeHint()));
}

void ServerWindow::BuildMenus() {
    QMenu* const server = menuBar()->addMenu(tr("&Server"));
    server->addAction(tr("&Quit"), this, &QWidget::close, QKeySequence(QStringLiteral("Ctrl+Q")));
    m_pages = menuBar()->addMenu(tr("&Go"));
    helpmenu::AddTo(*this, {[this] { return m_tabs; }, [this] { return KeysDialog::RowsOf(*this); },
                            tr("Multi-channel server %1").arg(QCoreApplication::applicationVersion())});
}

void ServerWindow::AddNotice(QWidget* notice) {
    m_layout->insertWidget(m_layout->indexOf(m_tabs), notice);
}

void ServerWindow::ShowState(ESeverity severity, const QString& word) {
    setWindowTitle(word.isEmpty() ? m_title : QStringLiteral("%1 | %2").arg(word, m_title));
    setWindowIcon(severity == ESeverity::Ok ? style()->standardIcon(QStyle::SP_ComputerIcon)
                                            : severitylook::Icon(severity, *style()));
}

int ServerWindow::CountClients() const {
    return static_cast<int>(m_listener.GetPeers().size());
}

void ServerWindow::ShowClients() {
    const int clients = CountClients();
    const QString text = clients == 1 ? tr("1 client") : tr("%1 clients").arg(clients);
    if (m_clients->text() != text) m_clients->setText(text);
}

void ServerWindow::CloseNow() {
    m_isForced = true;
    question::Withdraw(*this);
    close();  // a close that had asked goes on
}

void ServerWindow::closeEvent(QCloseEvent* event) {
    if (m_isForced || MayClose())
        QMainWindow::closeEvent(event);
    else
        event->ignore();
}

QString ServerWindow::LossOfClosing() const {
    const QString obstacle = m_obstacle();
    const QString clients = LossOfClients();
    if (obstacle.isEmpty()) return clients;
    const QString entries =
        tr("What was entered for the ground transmitters cannot be saved and will be lost: %1").arg(obstacle);
    return entries + QLatin1Char('\n') + (clients.isEmpty() ? tr("End the server all the same?") : clients);
}

QString ServerWindow::LossOfClients() const {
    const int clients = CountClients();
    if (clients == 0) return QString();
    QString loss = clients == 1 ? tr("A client will lose the server. End it all the same?")
                                : tr("%1 clients will lose the server. End it all the same?").arg(clients);
    const auto isUsed = [](const holders::Holder& holder) { return !holder.isIdle; };
    const std::vector<holders::Holder> users = holders::Find(mcskeys::Root, isUsed);
    if (!users.empty())
        loss += QLatin1Char('\n') + tr("These lose what they have: %1.").arg(holders::ToText(users));
    return loss;
}

bool ServerWindow::MayClose() {
    return question::IsConfirmed(this, tr("End the server"), tr("End"), [this] { return LossOfClosing(); }) ||
           m_isForced;
}
