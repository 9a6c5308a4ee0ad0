// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/suppression/suppressionrecovery.h>

#include <apps/mcserver/suppression/recoverycontent.h>

#include <devicecontrol/multichannelserver/common/gts/suppressionplant.h>

#include <platform/config/cfgcenter.h>
#include <platform/config/privatefile.h>

#include <QtCore/QFileInfo>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace {

/// The file itself, whichever links lead to it, so that two names of it are one.
QString ConfigurationFile() {
    const QFileInfo info(CfgCenter::Instance().GetStorePath());
    const QString target = info.canonicalFilePath();
    if (!target.isEmpty()) return target;
    const QString directory = QFileInfo(info.absolutePath()).canonicalFilePath();
    return directory.isEmpty() ? info.absoluteFilePath() : directory + QLatin1Char('/') + info.fileName();
}

/// What remains of \a modules once a configuration has kept them.
std::vector<ModuleSettings> AsKept(std::vector<ModuleSettings> modules) {
    const auto isLost = [](const ModuleSettings& module) {
        return module.type.isEmpty() || module.address.isEmpty() || module.pollInterval.count() == 0;
    };
    modules.erase(std::remove_if(modules.begin(), modules.end(), isLost), modules.end());
    constexpr PollInterval longest(std::numeric_limits<int>::max());
    for (ModuleSettings& module : modules) {
        module.pollInterval = std::min(module.pollInterval, longest);
        for (double& hz : module.frequencies)
            hz = std::max(QString::number(hz, 'f', 0).toDouble(), 0.0);
    }
    return modules;
}

CodedText ReasonText(SuppressionRecovery::EReason reason) {
    using EReason = SuppressionRecovery::EReason;
    switch (reason) {
        case EReason::Damaged:
            return ECode::IsDamaged;
        case EReason::OtherConfiguration:
            return ECode::IsOfAnotherConfiguration;
        case EReason::OlderThanConfiguration:
            return ECode::IsOlder;
        case EReason::Unreadable:
            return ECode::CannotBeRead;
        case EReason::None:
            break;
    }
    return {};
}

}  // namespace

CodedText SuppressionRecovery::Report::ToText() const {
    const CodedText why = detail.isEmpty() ? CodedText() : CodedText(ECode::InBrackets, {detail});
    switch (outcome) {
        case EOutcome::TakenOver:
            return {ECode::RecoveryTakenOver, {time.toString(Qt::ISODate), CodedText::Number(modules), file}};
        case EOutcome::PutAside:
            return {ECode::RecoveryPutAside, {ReasonText(reason), why, file}};
        case EOutcome::InTheWay:
            return {ECode::RecoveryInTheWay, {file, ReasonText(reason), why}};
        case EOutcome::Nothing:
            break;
    }
    return {};
}

const SuppressionRecovery::Report& SuppressionRecovery::Begin() {
    m_isBegun = true;
    m_configuration = ConfigurationFile();
    m_file = m_configuration + QStringLiteral(".gts-recovery");
    m_mark = SuppressionPlant::GetConfigurationMark();
    QByteArray bytes;
    const PrivateFile::Result result = PrivateFile::Read(m_file, RecoveryContent::MaxBytes + 1, &bytes);
    if (result.outcome == PrivateFile::EOutcome::Failed)
        PutAside(EReason::Unreadable, result.reason);
    else if (result.outcome == PrivateFile::EOutcome::Done)
        Judge(bytes);
    return m_report;
}

void SuppressionRecovery::Judge(const QByteArray& bytes) {
    RecoveryContent content;
    QString defect;
    if (!content.FromBytes(bytes, &defect)) return PutAside(EReason::Damaged, defect);
    m_report.time = content.time;
    if (content.configuration != m_configuration)
        return PutAside(EReason::OtherConfiguration, content.configuration);
    // A server that ended between saving and removing the file.
    if (AsKept(content.modules) == SuppressionPlant::GetConfiguredSettings()) {
        PrivateFile::Remove(m_file);
        return;
    }
    if (content.mark != m_mark) return PutAside(EReason::OlderThanConfiguration, QString());
    m_report.outcome = EOutcome::TakenOver;
    m_report.file = m_file;
    m_report.modules = static_cast<int>(content.modules.size());
    SuppressionPlant::LoadInstead(std::move(content.modules));
}

void SuppressionRecovery::PutAside(EReason reason, const QString& detail) {
    m_report.reason = reason;
    m_report.detail = detail;
    const PrivateFile::Result result = PrivateFile::PutAside(m_file, &m_report.file);
    m_report.outcome =
        result.outcome == PrivateFile::EOutcome::Done ? EOutcome::PutAside : EOutcome::InTheWay;
    if (m_report.outcome == EOutcome::PutAside) return;
    m_report.file = m_file;
    m_report.detail += (detail.isEmpty() ? QString() : QStringLiteral("; ")) + result.reason;
}

QString SuppressionRecovery::End() {
    if (!m_isBegun || m_report.outcome == EOutcome::InTheWay) return QString();
    const PrivateFile::Result result = PrivateFile::Remove(m_file);
    if (result.outcome == PrivateFile::EOutcome::Done) return QString();
    return QStringLiteral("the recovery file of the suppression '%1' cannot be removed (%2)")
        .arg(m_file, result.reason);
}

QByteArray SuppressionRecovery::ToBytes(std::vector<ModuleSettings> modules) const {
    return RecoveryContent{m_configuration, m_mark, QDateTime::currentDateTimeUtc(), std::move(modules)}
        .ToBytes();
}

QString SuppressionRecovery::Write(const QByteArray& bytes) const {
    if (m_report.outcome == EOutcome::InTheWay) return QStringLiteral("'%1' is in the way").arg(m_file);
    if (bytes.size() > RecoveryContent::MaxBytes)
        return QStringLiteral("'%1' would be larger than %2 bytes")
            .arg(m_file)
            .arg(RecoveryContent::MaxBytes);
    const PrivateFile::Result result = PrivateFile::Replace(m_file, bytes);
    if (result.outcome == PrivateFile::EOutcome::Done) return QString();
    return QStringLiteral("'%1' cannot be written: %2").arg(m_file, result.reason);
}
