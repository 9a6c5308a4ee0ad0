// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/mpxorvdetails.h>

#include <apps/pages/askingcheckbox.h>
#include <apps/pages/policypanel.h>
#include <apps/pages/serverkeys.h>

#include <platform/widgets/valuetext.h>
#include <platform/widgets/vclineedit.h>

#include <QtWidgets/QFormLayout>
#include <QtWidgets/QVBoxLayout>

namespace {

constexpr int MaxTitleLength = 60;

QString Below(const QString& path, QLatin1String key) {
    return path.isEmpty() ? QString() : mcskeys::Join(path, key);
}

QString NameOf(const QString& path) {
    return valuetext::Shortened(path.section(QLatin1Char('/'), -1), MaxTitleLength);
}

}  // namespace

MpxOrvDetails::MpxOrvDetails(QWidget* parent)
    : QGroupBox(parent),
      m_comment(new VCLineEdit(this, "MpxORVComment")),
      m_blanking(new AskingCheckBox(this, "Blanking")),
      m_policies(new PolicyPanel(this)) {
    setObjectName(QStringLiteral("MpxORVDetails"));
    m_comment->setAccessibleName(tr("Comment"));
    BuildBlanking();
    auto* const layout = new QVBoxLayout(this);
    auto* const form = new QFormLayout;
    form->addRow(tr("Comment:"), m_comment);
    layout->addLayout(form);
    layout->addWidget(m_policies);
    layout->addWidget(m_blanking);
    layout->addStretch();
    connect(m_policies, &PolicyPanel::LockChanged, this,
            [this] { m_blanking->SetLock(m_policies->GetLock()); });
    Show(QString());
}

void MpxOrvDetails::BuildBlanking() {
    m_blanking->SetText(tr("Obeys the ground transmitter suppression"));
    m_blanking->setAccessibleName(tr("Obeys the ground transmitter suppression"));
    m_blanking->SetAsker([this](bool isOn) {
        const QString text = tr("%1 loses its protection: it can then be tuned to the frequencies of ground "
                                "transmitters while these are on the air.")
                                 .arg(NameOf(m_path));
        return AskingCheckBox::Question{tr("Switch the suppression off"), isOn ? QString() : text,
                                        tr("Switch off")};
    });
}

void MpxOrvDetails::SetOwn(const QString& path) {
    m_policies->SetOwn(path);
}

void MpxOrvDetails::Show(const QString& path) {
    m_path = path;
    // In a title, an ampersand would mark a shortcut.
    setTitle(path.isEmpty() ? tr("No MpxORV is chosen")
                            : NameOf(path).replace(QLatin1Char('&'), QLatin1String("&&")));
    m_comment->SetText_ValuePath(Below(Below(path, mcskeys::Status), mcskeys::Comment));
    m_policies->Bind(Below(path, mcskeys::Policy));
    m_blanking->Set_ValuePath(Below(path, serverkeys::Blanking));
}
