// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mcslogdisplay.h>

#include <devicecontrol/multichannelserver/common/displays/displaypath.h>
#include <devicecontrol/multichannelserver/common/log/logtextedit.h>

#include <platform/values/valueaccess.h>
#include <platform/widgets/guibase.h>

#include <QtCore/QFile>
#include <QtCore/QPointer>
#include <QtCore/QTextStream>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

namespace {

/// Dialogs that \a owner waits for stand on the stack, and must not be destroyed with their parent.
void EndDialogs(QWidget& owner) {
    for (QDialog* const dialog : owner.findChildren<QDialog*>()) {
        dialog->reject();
        if (dialog->parent() == &owner) dialog->setParent(nullptr);
    }
}

}  // namespace

MCSLogDisplay::MCSLogDisplay(QWidget* parent, const char* name, Qt::WindowFlags flags)
    : QWidget(parent, flags), m_pLogMessage(*this) {
    setObjectName(name != nullptr ? QString::fromUtf8(name) : QStringLiteral("MCSLogDisplay"));
    MCSLogDisplay::Build();
    MCSLogDisplay::SetLogMessage_ValuePath(QString());
}

MCSLogDisplay::~MCSLogDisplay() {
    EndDialogs(*this);
    MCSLogDisplay::SetLogMessage_ValuePath(QString());
}

void MCSLogDisplay::Build() {
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(5);

    m_textEdit = new LogTextEdit(this);
    m_textEdit->setObjectName(QStringLiteral("LogTextEdit"));  // fixed: object-names
    m_textEdit->setAccessibleName(tr("Log messages"));
    m_textEdit->setWordWrapMode(QTextOption::NoWrap);
    m_textEdit->setAcceptRichText(true);
    layout->addWidget(m_textEdit, 1);

    auto* const buttons = new QHBoxLayout;
    buttons->setContentsMargins(5, 5, 5, 5);
    layout->addLayout(buttons);
    BuildButtons(*buttons);
}

void MCSLogDisplay::BuildButtons(QHBoxLayout& layout) {
    auto* const clear = new QPushButton(tr("Clear"), this);
    clear->setObjectName(QStringLiteral("ClearButton"));
    connect(clear, SIGNAL(clicked()), this, SLOT(SlotClear()));
    layout.addWidget(clear);

    auto* const save = new QPushButton(tr("Save to file..."), this);
    save->setObjectName(QStringLiteral("SaveLogButton"));
    connect(save, SIGNAL(clicked()), this, SLOT(SlotSaveLog()));
    layout.addWidget(save);
}

bool MCSLogDisplay::SetLogMessage_ValuePath(const QString& path) {
    m_pLogMessage.End();
    if (!path.isEmpty()) {
        m_pLogMessage.Begin(values::FindValue<values::Value<QString>>(path, nullptr, nullptr));
        values::NotifyInitially(m_pLogMessage.Get(), this);
    }
    return bool(m_pLogMessage);
}

QByteArray MCSLogDisplay::GetValuePath() const {
    return DisplayPath::Of(*this).toUtf8();
}

void MCSLogDisplay::SetValuePath(const QByteArray& path) {
    DisplayPath::Set(*this, QString::fromUtf8(path),
                     [this](const QString& there) { SetLogMessage_ValuePath(there); });
}

void MCSLogDisplay::SetMaxMessages(int max) {
    if (max < 1) return;
    m_maxMessages = max;
    ClearExceedingLines();
}

void MCSLogDisplay::Update(Observable* source, TChangeCode code) {
    if (m_pLogMessage.EndIfGoingAway(source, code)) return;
    if (m_pLogMessage.Is(source) && code == changecode::ContentChanged)
        OnNewLogMessageArrived(m_pLogMessage->GetValue());
}

// fixed: no-scrolling. The view follows the end only where it is there already: whoever reads further up is
// not disturbed.
void MCSLogDisplay::OnNewLogMessageArrived(const QString& text) {
    if (text.isEmpty()) return;
    m_textEdit->AppendMessage(text);
    ClearExceedingLines();
}

// All of them, not only the oldest. (fixed: clears-all-lines)
void MCSLogDisplay::ClearExceedingLines() {
    if (m_textEdit->document()->blockCount() > m_maxMessages) m_textEdit->Clear();
}

void MCSLogDisplay::SlotClear() {
    m_textEdit->Clear();
}

void MCSLogDisplay::SlotSaveLog() {
    const QPointer<MCSLogDisplay> self(this);  // a dialog lets everything else go on
    const QString fileName = QFileDialog::getSaveFileName(
        this, tr("Save log messages..."), QStringLiteral("mcslog.html"), tr("HTML file (*.html)"), nullptr,
        GuiBase::Instance().UseNativeDialogs());
    if (self == nullptr || fileName.isEmpty()) return;
    if (QFile::exists(fileName) && !MayWrite(fileName)) return;
    if (self != nullptr) SlotSaveLogToFile(fileName);
}

// The box is the one that QMessageBox::warning() makes of the texts of its buttons. But that answers 0, which
// is "Overwrite", also if the application ends, and so nobody answers.
bool MCSLogDisplay::MayWrite(const QString& fileName) {
    QString question = tr("File '%1' already exists.\nDo you want to overwrite it?").arg(fileName);
    // A name that looks like markup is shown as it is. (fixed: file-name-as-text)
    if (Qt::mightBeRichText(question)) question = Qt::convertFromPlainText(question);
    QMessageBox box(QMessageBox::Warning, tr("File exists"), question, QMessageBox::NoButton, this);
    const QAbstractButton* const overwrite = box.addButton(tr("Overwrite"), QMessageBox::ActionRole);
    QPushButton* const cancel = box.addButton(tr("Cancel"), QMessageBox::ActionRole);
    box.setDefaultButton(cancel);
    box.setEscapeButton(cancel);
    box.exec();
    return box.clickedButton() == overwrite;
}

void MCSLogDisplay::SlotSaveLogToFile(QString sFileName) {  // NOLINT(performance-unnecessary-value-param)
    QFile file(sFileName);
    if (!file.open(QIODevice::WriteOnly)) return;
    m_textEdit->Flush();
    QTextStream stream(&file);  // fixed: plain-text-in-html-file
    stream << m_textEdit->toPlainText();
}

void MCSLogDisplay::showEvent(QShowEvent*) {
    Q_EMIT SignalVisible(true);
}

void MCSLogDisplay::hideEvent(QHideEvent*) {
    Q_EMIT SignalVisible(false);
}
