// SPDX-License-Identifier: Apache-2.0
#include <apps/designer/paths/pathdialog.h>

#include <apps/designer/boundwidget.h>
#include <apps/designer/content.h>
#include <apps/designer/paths/pathmodel.h>

#include <platform/widgets/valuetext.h>

#include <QtCore/QSortFilterProxyModel>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTreeView>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>
#include <iterator>

namespace {

constexpr int LongestAddress = 300;  // characters, as below
constexpr int LongestName = 256;     // of users and tokens; servers take no longer ones
constexpr int LongestPath = 4000;
constexpr int LongestFile = 4000;
constexpr int LongestShown = 200;
constexpr std::chrono::milliseconds TreeInterval(200);
constexpr std::chrono::milliseconds ContentInterval(500);
constexpr int MostExpanded = 500;  // rows: of more, people filter further

/// Where the last dialog connected to. No secret, and not kept beyond the process.
QString& LastAddress() {
    static auto& address = *new QString(QStringLiteral("127.0.0.1:%1").arg(ServerAddress::DefaultPort));
    return address;
}

}  // namespace

PathDialog::PathDialog(const BoundWidget& widget, const QString& path, QWidget* parent)
    : QDialog(parent),
      m_widget(widget),
      m_model(new PathModel([this](const QString& local) { return m_session.ServerPathOf(local); },
                            [this](const QString& server) { return m_session.LocalPathOf(server); }, this)),
      m_shown(new QSortFilterProxyModel(this)),
      m_address(AddField("ServerAddress", LongestAddress)),
      m_user(AddField("User", LongestName)),
      m_token(AddField("Token", LongestName)),
      m_caFile(AddField("CaFile", LongestFile)),
      m_status(new QLabel(this)),
      m_filter(AddField("Filter", LongestPath)),
      m_view(new QTreeView(this)),
      m_path(AddField("Path", LongestPath)),
      m_problem(new QLabel(this)) {
    setObjectName(QStringLiteral("PathDialog"));
    setWindowTitle(tr("Path of a %1").arg(QString::fromLatin1(widget.className)));
    m_address->setText(LastAddress());
    m_path->setText(path);
    Build();
    ShowState();
    Judge();
}

PathDialog::~PathDialog() {
    // The session tells that it leaves, the focus goes elsewhere, and the tree loses its rows when half of
    // this is gone.
    m_session.disconnect(this);
    qApp->disconnect(this);
    m_view->selectionModel()->disconnect(this);
}

QLineEdit* PathDialog::AddField(const char* name, int longest) {
    auto* const field = new QLineEdit(this);
    field->setObjectName(QString::fromLatin1(name));
    field->setMaxLength(longest);
    return field;
}

void PathDialog::Build() {
    for (QLabel* const label : {m_status, m_problem}) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
    }
    m_status->setObjectName(QStringLiteral("Status"));
    m_problem->setObjectName(QStringLiteral("Problem"));
    m_filter->setPlaceholderText(tr("Filter: a part of the path"));
    m_filter->setAccessibleName(tr("Filter"));
    m_filter->setClearButtonEnabled(true);
    BuildTree();
    QLayout* const connection = BuildConnection();
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    m_ok = buttons->button(QDialogButtonBox::Ok);
    setTabOrder(m_caFile, m_connect);
    setTabOrder(m_connect, m_filter);
    auto* const path = new QFormLayout;
    path->addRow(tr("&Path:"), m_path);

    auto* const layout = new QVBoxLayout(this);
    layout->addLayout(connection);
    layout->addWidget(m_status);
    layout->addWidget(m_filter);
    layout->addWidget(m_view, 1);
    layout->addLayout(path);
    layout->addWidget(m_problem);
    layout->addWidget(buttons);
    resize(640, 620);

    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(qApp, &QApplication::focusChanged, this, &PathDialog::ChooseDefault);
    connect(m_filter, &QLineEdit::textChanged, this, &PathDialog::Filter);
    connect(m_path, &QLineEdit::textChanged, this, &PathDialog::Judge);
    connect(&m_session, &PathSession::StateChanged, this, &PathDialog::ShowState);
    connect(&m_session, &PathSession::StructureChanged, this, [this] {
        if (!m_treeTimer.isActive()) m_treeTimer.start();
    });
    m_treeTimer.setSingleShot(true);
    m_treeTimer.setInterval(TreeInterval);
    connect(&m_treeTimer, &QTimer::timeout, this, &PathDialog::ShowTree);
    m_contentTimer.setInterval(ContentInterval);
    connect(&m_contentTimer, &QTimer::timeout, m_view->viewport(), QOverload<>::of(&QWidget::update));
}

QLayout* PathDialog::BuildConnection() {
    m_token->setEchoMode(QLineEdit::Password);
    m_caFile->setPlaceholderText(tr("those that the system trusts"));
    m_address->setToolTip(tr("HOST, HOST:PORT, mcss://HOST (encrypted) or nats://HOST/STATION"));
    m_connect = new QPushButton(tr("&Connect"), this);
    m_connect->setObjectName(QStringLiteral("Connect"));
    m_connect->setAutoDefault(false);
    connect(m_connect, &QPushButton::clicked, this, &PathDialog::Connect);
    auto* const server = new QHBoxLayout;
    server->addWidget(m_address, 1);
    server->addWidget(m_connect);
    auto* const caption = new QLabel(tr("&Server:"), this);
    caption->setBuddy(m_address);
    auto* const form = new QFormLayout;
    form->addRow(caption, server);
    form->addRow(tr("&User:"), m_user);
    form->addRow(tr("&Token:"), m_token);
    form->addRow(tr("Certificate &authority:"), m_caFile);
    return form;
}

void PathDialog::BuildTree() {
    m_shown->setSourceModel(m_model);
    m_shown->setRecursiveFilteringEnabled(true);
    m_shown->setFilterCaseSensitivity(Qt::CaseInsensitive);
    m_shown->setFilterRole(PathModel::PathRole);
    m_view->setObjectName(QStringLiteral("Tree"));
    m_view->setAccessibleName(tr("The server's tree"));
    m_view->setModel(m_shown);
    m_view->setUniformRowHeights(true);
    m_view->header()->resizeSection(PathModel::NameColumn, 300);
    connect(m_view->selectionModel(), &QItemSelectionModel::currentRowChanged, this, &PathDialog::TakeRow);
    connect(m_view, &QTreeView::doubleClicked, this, [this] {
        if (m_ok->isEnabled() && GetContent() != content::Node) accept();
    });
}

/// Enter in what is entered to connect connects; elsewhere it takes the path.
void PathDialog::ChooseDefault(const QWidget*, const QWidget* focused) {
    const QWidget* const fields[] = {m_address, m_user, m_token, m_caFile, m_connect};
    const bool isAboutServer = std::find(std::begin(fields), std::end(fields), focused) != std::end(fields);
    (isAboutServer ? m_connect : m_ok)->setDefault(true);
}

void PathDialog::Connect() {
    ServerAddress server;
    const QString text = m_address->text().trimmed();
    const QString problem = server.Parse(text);
    if (!problem.isEmpty()) {
        m_session.Disconnect();
        m_status->setText(tr("That is no server: %1").arg(valuetext::Shortened(problem, LongestShown)));
        return;
    }
    LastAddress() = text;
    m_session.Connect(server, Options());
}

VtClientOptions PathDialog::Options() const {
    VtClientOptions options;
    options.user = m_user->text();
    options.token = m_token->text();
    options.caFile = m_caFile->text();
    return options;
}

void PathDialog::ShowState() {
    m_status->setText(StateText());
    const PathSession::EState state = m_session.GetState();
    const bool hasTree = state == PathSession::EState::Ready || state == PathSession::EState::Lost;
    m_filter->setEnabled(hasTree);
    m_view->setEnabled(hasTree);
    if (hasTree) {
        m_contentTimer.start();
        ShowTree();
        ShowPath();
    } else {
        m_contentTimer.stop();
        m_model->Follow(nullptr);
        Judge();
    }
}

QString PathDialog::StateText() const {
    const QString server = valuetext::Shortened(LastAddress(), LongestShown);
    QString problem = valuetext::Shortened(m_session.GetProblem(), LongestShown);
    if (problem.isEmpty()) problem = tr("nobody knows why");
    switch (m_session.GetState()) {
        case PathSession::EState::Idle:
            return tr("Connect to a running server to choose from its tree, or type the path.");
        case PathSession::EState::Connecting:
            return tr("Connecting to %1...").arg(server);
        case PathSession::EState::Reading:
            return tr("Connected to %1; its tree is on its way...").arg(server);
        case PathSession::EState::Ready:
            return m_model->IsCut() ? tr("Connected to %1, of which the first %2 rows are shown.")
                                          .arg(server, QString::number(PathModel::MostRows))
                                    : tr("Connected to %1.").arg(server);
        case PathSession::EState::Lost:
            return tr("The connection to %1 is lost, and tried again: %2").arg(server, problem);
        case PathSession::EState::Failed:
            break;
    }
    return tr("No connection to %1: %2").arg(server, problem);
}

void PathDialog::ShowTree() {
    const bool wasEmpty = m_model->rowCount() == 0;
    m_model->Follow(m_session.GetTop());
    if (wasEmpty) m_view->expandToDepth(0);
    m_status->setText(StateText());
    Judge();
}

/// Brings the row of the path into view.
void PathDialog::ShowPath() {
    const QModelIndex row = m_shown->mapFromSource(m_model->IndexOf(m_path->text().trimmed()));
    if (!row.isValid()) return;
    m_view->setCurrentIndex(row);
    m_view->scrollTo(row);
}

void PathDialog::Filter(const QString& text) {
    m_shown->setFilterFixedString(text.trimmed());
    if (text.trimmed().isEmpty()) {
        m_view->collapseAll();
        m_view->expandToDepth(0);
        return ShowPath();
    }
    int rows = 0;
    for (QModelIndex row = m_shown->index(0, 0); row.isValid() && rows < MostExpanded; ++rows) {
        m_view->expand(row);
        row = m_view->indexBelow(row);
    }
}

void PathDialog::TakeRow(const QModelIndex& row) {
    const QModelIndex name = row.sibling(row.row(), PathModel::NameColumn);
    if (name.isValid()) m_path->setText(name.data(PathModel::PathRole).toString());
}

QString PathDialog::GetPath() const {
    return m_path->text().trimmed();
}

unsigned PathDialog::GetContent() const {
    const QModelIndex row = m_model->IndexOf(GetPath());
    return row.isValid() ? row.data(PathModel::KindRole).toUInt() : unsigned(content::None);
}

void PathDialog::Judge() {
    if (m_ok == nullptr) return;
    const QString problem = FindProblem();
    const bool isKnown = m_model->rowCount() > 0 && !GetPath().isEmpty();
    m_ok->setEnabled(problem.isEmpty());
    m_problem->setText(!problem.isEmpty() ? problem
                       : isKnown && GetContent() == content::None
                           ? tr("The server has nothing there now; the widget waits for it.")
                           : QString());
}

/// Why the path cannot be taken. One that is not there may come.
QString PathDialog::FindProblem() const {
    const QString path = GetPath();
    if (path.isEmpty()) return QString();  // bound to nothing
    if (!path.startsWith(QLatin1Char('/'))) return tr("A path begins with \"/\".");
    const unsigned found = GetContent();
    if (found == content::None || (found & m_widget.contents) != 0) return QString();
    return tr("A %1 shows %2; the server has a %3 there.")
        .arg(QString::fromLatin1(m_widget.className), content::NamesOf(m_widget.contents),
             content::NameOf(found));
}
