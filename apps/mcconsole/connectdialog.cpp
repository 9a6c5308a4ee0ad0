// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/connectdialog.h>

#include <apps/mcconsole/stations/stationspanel.h>

#include <platform/nats/natsbusmaker.h>
#include <platform/nats/natsscheme.h>
#include <platform/widgets/guibase.h>
#include <platform/widgets/valuetext.h>

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>

namespace {

constexpr int FieldWidth = 280;  // at least, and never so that a caption is cut
constexpr int LongestAddress = 300;
constexpr int LongestName = 256;  // of users and tokens; servers take no longer ones
constexpr int LongestShown = 60;

bool IsThisMachine(const QString& host) {
    return host == QLatin1String("localhost") || host == QLatin1String("::1") ||
           host.startsWith(QLatin1String("127."));
}

}  // namespace

ConnectDialog::ConnectDialog(const RecentServers& recent, const VtClientOptions& options, QWidget* parent,
                             const StationFinder::MakeBus& makeBus)
    : QDialog(parent),
      m_recent(recent),
      m_options(options),
      m_address(new QComboBox(this)),
      m_encrypted(new QCheckBox(tr("&Encrypted (TLS)"), this)),
      m_caFile(new QLineEdit(this)),
      m_browse(new QPushButton(tr("&Browse..."), this)),
      m_user(new QLineEdit(options.user, this)),
      m_token(new QLineEdit(options.token, this)),
      m_problem(new QLabel(this)) {
    setObjectName(QStringLiteral("ConnectDialog"));
    setWindowTitle(tr("Connect to a server"));
    if (makeBus) BuildStations(makeBus);
    Build();
    FillRecent();
}

StationFinder::MakeBus ConnectDialog::BusOfThisBuild() {
    return nats::IsBuiltIn() ? StationFinder::MakeBus(nats::MakeBus) : nullptr;
}

void ConnectDialog::BuildStations(const StationFinder::MakeBus& makeBus) {
    // Credentials of NATS come from the environment; the authority is the one that is entered above.
    const auto optionsFor = [this](const NatsPlace& place) {
        VtClientOptions options = m_options;
        options.caFile = place.isEncrypted ? m_caFile->text() : QString();
        return nats::OptionsOf(options, place.isEncrypted);
    };
    m_stations = new StationsPanel(makeBus, optionsFor, this);
    connect(m_stations, &StationsPanel::Chosen, this, &ConnectDialog::ShowStation);
    connect(m_stations, &StationsPanel::Activated, this, [this](const ServerAddress& address) {
        ShowStation(address);
        TryToAccept();
    });
    connect(m_stations, &StationsPanel::Reached, this,
            [this](const QString& place) { m_recent.AddNats(place); });
}

void ConnectDialog::Build() {
    m_address->setObjectName(QStringLiteral("ServerAddress"));
    m_address->setEditable(true);
    m_address->setMinimumWidth(FieldWidth);
    m_address->setInsertPolicy(QComboBox::NoInsert);
    m_token->setObjectName(QStringLiteral("Token"));
    m_token->setEchoMode(QLineEdit::Password);
    m_problem->setObjectName(QStringLiteral("Problem"));
    m_problem->setTextFormat(Qt::PlainText);
    m_problem->setWordWrap(true);

    m_address->lineEdit()->setMaxLength(LongestAddress);
    m_user->setObjectName(QStringLiteral("User"));
    m_user->setMaxLength(LongestName);
    m_token->setMaxLength(LongestName);

    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    QPushButton* const connectButton = buttons->addButton(tr("&Connect"), QDialogButtonBox::AcceptRole);
    connectButton->setDefault(true);

    auto* const form = new QFormLayout;
    form->addRow(tr("&Server:"), m_address);
    form->addRow(QString(), m_encrypted);
    auto* const caCaption = new QLabel(tr("Certificate &authority:"), this);
    caCaption->setBuddy(m_caFile);
    form->addRow(caCaption, BuildCaRow());
    form->addRow(tr("&User:"), m_user);
    form->addRow(tr("&Token:"), m_token);
    auto* const layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(m_problem);
    if (m_stations != nullptr) layout->addWidget(m_stations, 1);
    layout->addStretch();
    layout->addWidget(buttons);

    connect(m_address, QOverload<int>::of(&QComboBox::activated), this, &ConnectDialog::ShowRecent);
    connect(m_address, &QComboBox::editTextChanged, this, &ConnectDialog::OnAddressEdited);
    connect(m_encrypted, &QCheckBox::toggled, this, &ConnectDialog::ShowEncryption);
    connect(buttons, &QDialogButtonBox::accepted, this, &ConnectDialog::TryToAccept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

QLayout* ConnectDialog::BuildCaRow() {
    m_caFile->setObjectName(QStringLiteral("CaFile"));
    m_caFile->setPlaceholderText(tr("those that the system trusts"));
    constexpr int frame = 20;  // pixels around a text in the field
    m_caFile->setMinimumWidth(m_caFile->fontMetrics().horizontalAdvance(m_caFile->placeholderText()) + frame);
    m_caFile->setAccessibleName(tr("Certificate authority"));
    m_browse->setAutoDefault(false);
    connect(m_browse, &QPushButton::clicked, this, &ConnectDialog::ChooseCaFile);
    auto* const row = new QHBoxLayout;
    row->addWidget(m_caFile);
    row->addWidget(m_browse);
    return row;
}

void ConnectDialog::FillRecent() {
    for (const RecentServers::Entry& entry : m_recent.GetEntries()) {
        ServerAddress plain = entry.server;
        plain.isEncrypted = false;  // the check box says it, so the text needs no scheme
        m_address->addItem(plain.ToText());
    }
    if (m_address->count() > 0)
        ShowRecent(0);
    else
        m_address->setEditText(QStringLiteral("127.0.0.1:%1").arg(ServerAddress::DefaultPort));
    if (!m_options.user.isEmpty()) m_user->setText(m_options.user);
    m_token->setText(m_options.token);
    if (!m_options.caFile.isEmpty()) m_caFile->setText(m_options.caFile);
    if (!m_options.caFile.isEmpty() || !m_options.certificateFile.isEmpty()) PreferEncryption();
    ShowEncryption();
    if (m_stations != nullptr) m_stations->OfferPlaces(KnownPlaces());
}

/// Where NATS was reached, and where stations were that were connected to.
QStringList ConnectDialog::KnownPlaces() const {
    QStringList places = m_recent.GetNats();
    for (const RecentServers::Entry& entry : m_recent.GetEntries()) {
        NatsPlace place;
        if (!entry.server.isOverNats || !place.Parse(entry.server.ToText())) continue;
        if (!places.contains(place.ToText())) places += place.ToText();
    }
    return places;
}

void ConnectDialog::OnAddressEdited(const QString& text) {
    const bool isOverNats =
        text.startsWith(QLatin1String("nats://")) || text.startsWith(QLatin1String("natss://"));
    if (text.startsWith(QLatin1String("mcss://")) || text.startsWith(QLatin1String("natss://")))
        m_encrypted->setChecked(true);
    if (m_stations == nullptr)
        m_problem->setText(isOverNats ? tr("This build knows no NATS: give HOST or HOST:PORT.") : QString());
}

/// With what was used with that station the last time, if anything was.
void ConnectDialog::ShowStation(const ServerAddress& address) {
    const auto& entries = m_recent.GetEntries();
    const QString text = address.ToText();
    const auto known = std::find_if(entries.begin(), entries.end(), [&](const RecentServers::Entry& entry) {
        return entry.server.ToText() == text;
    });
    if (known != entries.end())
        ShowRecent(static_cast<int>(known - entries.begin()));
    else
        m_encrypted->setChecked(address.isEncrypted);
    ServerAddress plain = address;
    plain.isEncrypted = false;
    m_address->setEditText(plain.ToText());
    m_problem->clear();
}

void ConnectDialog::PreferEncryption() {
    m_encrypted->setChecked(true);
}

void ConnectDialog::ShowRecent(int index) {
    const auto& entries = m_recent.GetEntries();
    if (index < 0 || index >= static_cast<int>(entries.size())) return;
    const RecentServers::Entry& entry = entries[static_cast<std::size_t>(index)];
    m_encrypted->setChecked(entry.server.isEncrypted);
    m_caFile->setText(entry.caFile);
    m_user->setText(entry.user);
    // The token of one user is nothing for another.
    const bool isTheirs = m_options.user.isEmpty() || m_options.user == entry.user;
    m_token->setText(isTheirs ? m_options.token : QString());
}

void ConnectDialog::ShowEncryption() {
    m_caFile->setEnabled(m_encrypted->isChecked());
    m_browse->setEnabled(m_encrypted->isChecked());
}

void ConnectDialog::ChooseCaFile() {
    const QString file = QFileDialog::getOpenFileName(this, tr("Certificate authority"), m_caFile->text(),
                                                      tr("Certificates (*.pem *.crt);;All files (*)"),
                                                      nullptr, GuiBase::Instance().UseNativeDialogs());
    if (!file.isEmpty()) m_caFile->setText(file);
}

void ConnectDialog::TryToAccept() {
    ServerAddress server;
    const QString text = m_address->currentText().trimmed();
    const bool isServer = server.Parse(text).isEmpty();
    server.isEncrypted = server.isEncrypted || m_encrypted->isChecked();
    const QString problem = isServer ? FindProblem(server) : WhyNoServer(text);
    m_problem->setText(problem);
    if (!problem.isEmpty()) return;
    m_server = server;
    accept();
}

QString ConnectDialog::WhyNoServer(const QString& text) {
    const QString shown = valuetext::Shortened(text, LongestShown);
    const QString ace = ServerAddress::AceFormOf(text);
    if (ace.isEmpty()) return tr("\"%1\" cannot be a server: write HOST or HOST:PORT.").arg(shown);
    return tr("\"%1\" has letters that addresses cannot have: write %2.").arg(shown, ace);
}

QString ConnectDialog::FindProblem(const ServerAddress& server) const {
    if (m_token->text().isEmpty()) return QString();
    if (m_user->text().isEmpty()) return tr("A token belongs to a user: say whose it is.");
    const QStringList hosts = server.Hosts();
    if (!server.isEncrypted && !std::all_of(hosts.begin(), hosts.end(), IsThisMachine))
        return tr("A token is a secret: it is sent to other machines only if the connection is encrypted.");
    return QString();
}

VtClientOptions ConnectDialog::GetOptions() const {
    VtClientOptions options = m_options;
    options.user = m_user->text();
    options.token = m_token->text();
    options.caFile = m_server.isEncrypted ? m_caFile->text() : QString();
    return options;
}
