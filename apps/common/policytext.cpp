// SPDX-License-Identifier: Apache-2.0
#include <apps/common/policytext.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QStringList>

namespace {

struct PolicyCaption {
    const char* name;     ///< of the switch in the tree
    const char* caption;  ///< for people
};

constexpr PolicyCaption PolicyCaptions[] = {
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

}  // namespace

std::vector<QString> policytext::Names() {
    std::vector<QString> names;
    for (const PolicyCaption& policy : PolicyCaptions)
        names.push_back(QString::fromLatin1(policy.name));
    return names;
}

QString policytext::Caption(const QString& name) {
    for (const PolicyCaption& policy : PolicyCaptions)
        if (name == QLatin1String(policy.name))
            return QCoreApplication::translate("PolicyPanel", policy.caption);
    return name;
}

QString policytext::Mentioned(const QString& names) {
    QStringList mentioned;
    for (const QString& name : names.split(QStringLiteral(", ")))
        mentioned +=
            QCoreApplication::translate("PolicyPanel", "\"%1\"", "A policy in a sentence").arg(Caption(name));
    return mentioned.join(QStringLiteral(", "));
}
