// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/policypanel.h>

#include <platform/widgets/vccheckbox.h>

#include <QtWidgets/QGridLayout>

namespace {

struct Policy {
    const char* name;     ///< of the switch in the tree
    const char* caption;  ///< for people
};

// In the order in which people look for them: what it may tune, what it may be, what it may do.
constexpr Policy Policies[] = {
    {"MayAlterFreqSingle", QT_TRANSLATE_NOOP("PolicyPanel", "May tune a single frequency")},
    {"MayAlterFreqRanges", QT_TRANSLATE_NOOP("PolicyPanel", "May alter frequency ranges")},
    {"MayReadSingleFreqFromMasterRanges",
     QT_TRANSLATE_NOOP("PolicyPanel", "May read a frequency from the master's ranges")},
    {"MayBeJobMaster", QT_TRANSLATE_NOOP("PolicyPanel", "May be job master")},
    {"IsSlaveToMasterJob", QT_TRANSLATE_NOOP("PolicyPanel", "Follows the master's job")},
    {"SeesMasterJobRf", QT_TRANSLATE_NOOP("PolicyPanel", "Sees the RF of the master's job")},
    {"MayRestartJob", QT_TRANSLATE_NOOP("PolicyPanel", "May restart the job")},
    {"MayBIT", QT_TRANSLATE_NOOP("PolicyPanel", "May run built-in tests")},
    {"MayCal", QT_TRANSLATE_NOOP("PolicyPanel", "May calibrate")},
    {"MayAlterDeviceSettings", QT_TRANSLATE_NOOP("PolicyPanel", "May alter device settings")},
};
constexpr int Columns = 2;

}  // namespace

PolicyPanel::PolicyPanel(QWidget* parent) : QWidget(parent) {
    auto* const layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    const int rows = (static_cast<int>(std::size(Policies)) + Columns - 1) / Columns;
    for (const Policy& policy : Policies) {
        auto* const box = new VCCheckBox(this, policy.name);
        box->SetText(tr(policy.caption));
        box->setAccessibleName(tr(policy.caption));
        const int index = static_cast<int>(m_switches.size());
        layout->addWidget(box, index % rows, index / rows);
        m_switches.push_back({box, QString::fromLatin1(policy.name)});
    }
}

PolicyPanel::~PolicyPanel() = default;

void PolicyPanel::Bind(const QString& path) {
    for (const Switch& item : m_switches)
        item.box->Set_ValuePath(path.isEmpty() ? QString() : path + QLatin1Char('/') + item.policy);
}
