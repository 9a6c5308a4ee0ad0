// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/connectdialog.h>

#include <platform/widgets/guibase.h>

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

namespace {

constexpr int MinimumWidth = 420;

}  // namespace

ConnectDialog::ConnectDialog(const RecentServers& recent, const VtClientOptions& options, QWidget* parent)
    : QDialog(parent),
      m_recent(recent),
      m_options(options),
      m_address(new QComboBox(this)),
      m_encrypted(new QCheckBox(tr("&Encrypted (TLS)"), this)),
      m_caFile(new QLineEdit(this)),
      m_user(new QLineEdit(options.user, this)),
      m_token(new QLineEdit(options.token, this)),
      m_problem(new QLabel(this)) {
    setObjectName(QStringLiteral("ConnectDialog"));
    setWindowTitle(tr("Connect to a server"));
    setMinimumWidth(MinimumWidth);
    Build();
    FillRecent();
}

void ConnectDialog::Build() {
    m_address->setObjectName(QStringLiteral("ServerAddress"));
    m_address->setEditable(true);
    m_address->setInsertPolicy(QComboBox::NoInsert);
    m_token->setObjectName(QStringLiteral("Token"));
    m_token->setEchoMode(QLineEdit::Password);
    m_problem->setObjectName(QStringLiteral("Problem"));
    m_problem->setTextFormat(Qt::PlainText);
    m_problem->setWordWrap(true);

    auto* const browse = new QPushButton(tr("&Browse..."), this);
    browse->setAutoDefault(false);
    auto* const caRow = new QHBoxLayout;
    caRow->addWidget(m_caFile);
    caRow->addWidget(browse);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    QPushButton* const connectButton = buttons->addButton(tr("&Connect"), QDialogButtonBox::AcceptRole);
    connectButton->setDefault(true);

    auto* const form = new QFormLayout;
    form->addRow(tr("&Server:"), m_address);
    form->addRow(QString(), m_encrypted);
    auto* const caCaption = new QLabel(tr("Certificate &authority:"), this);
    caCaption->setBuddy(m_caFile);
    form->addRow(caCaption, caRow);
    form->addRow(tr("&User:"), m_user);
    form->addRow(tr("&Token:"), m_token);
    m_caFile->setPlaceholderText(tr("those that the system trusts"));
    m_caFile->setAccessibleName(tr("Certificate authority"));
    auto* const layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(m_problem);
    layout->addStretch();
    layout->addWidget(buttons);

    connect(browse, &QPushButton::clicked, this, &ConnectDialog::ChooseCaFile);
    connect(m_address, QOverload<int>::of(&QComboBox::activated), this, &ConnectDialog::ShowRecent);
    connect(buttons, &QDialogButtonBox::accepted, this, &ConnectDialog::TryToAccept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void ConnectDialog::FillRecent() {
    for (const RecentServers::Entry& entry : m_recent.GetEntries()) {
        ServerAddress plain = entry.server;
        plain.isEncrypted = false;  // that is the box below
        m_address->addItem(plain.ToText());
    }
    if (m_address->count() > 0)
        ShowRecent(0);
    else
        m_address->setEditText(QStringLiteral("127.0.0.1:%1").arg(ServerAddress::DefaultPort));
}

void ConnectDialog::ShowRecent(int index) {
    const auto& entries = m_recent.GetEntries();
    if (index < 0 || index >= static_cast<int>(entries.size())) return;
    const RecentServers::Entry& entry = entries[static_cast<std::size_t>(index)];
    m_encrypted->setChecked(entry.server.isEncrypted);
    m_caFile->setText(entry.caFile);
    m_user->setText(entry.user);
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
    if (!server.Parse(text).isEmpty())
        return m_problem->setText(tr("\"%1\" cannot be a server: write HOST or HOST:PORT.").arg(text));
    server.isEncrypted = server.isEncrypted || m_encrypted->isChecked();
    if (!m_token->text().isEmpty() && m_user->text().isEmpty())
        return m_problem->setText(tr("A token belongs to a user: say whose it is."));
    m_server = server;
    accept();
}

VtClientOptions ConnectDialog::GetOptions() const {
    VtClientOptions options = m_options;
    options.user = m_user->text();
    options.token = m_token->text();
    options.caFile = m_caFile->text();
    return options;
}
