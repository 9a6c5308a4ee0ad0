// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/gts/plant/errorreport.h>

#include <devicecontrol/multichannelserver/common/gts/gtskeys.h>

#include <platform/app/errorhandler.h>
#include <platform/values/valueaccess.h>

#include <QtCore/QCoreApplication>

namespace {

/// Null without a tree.
values::Value<QString>* ProvideValue() {
    if (values::Tree::Instance() == nullptr) return nullptr;
    const QString path = mcskeys::Join(gtskeys::NodePath(), gtskeys::Error);
    auto* const value = values::ProvideValue<values::Value<QString>>(path, nullptr);
    if (value != nullptr && value->GetDelivery() != values::EDelivery::EveryChange)
        value->SetDelivery(values::EDelivery::EveryChange);
    return value;
}

}  // namespace

// In the display's name, whether there is one or not: so the texts and traces are known.
QString errorreport::Text(const QString& name, const QString& address, int errorcode,
                          const QString& errortext) {
    return QCoreApplication::translate("GTSDisplayImpl", "GTS DataModule %1/%2 error: %3 (%4)")
        .arg(name, address, errortext, QString::number(errorcode));
}

void errorreport::Trace(const QString& message) {
    // fixed: trace-places
    constexpr const wchar_t* SourcePath = L"devicecontrol/multichannelserver/common/gts/gtsdisplayimpl";
    if (ErrorHandler::Instance().IsTraced(ErrorHandler::TraceWarnings)) _Q_Trace(message, SourcePath, 390);
}

void errorreport::Write(const QString& message) {
    if (auto* const value = ProvideValue()) value->SetValue(message, nullptr);
}

void errorreport::Provide() {
    ProvideValue();
}
