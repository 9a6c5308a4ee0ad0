// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/program/savedconfig.h>

#include <apps/pages/serverkeys.h>

#include <platform/values/valueaccess.h>

#include <utility>

namespace {

/// Those that are saved when somebody wants it. Two more are saved whenever they change.
constexpr QLatin1String SavedKeys[] = {mcskeys::DeviceAddress, mcskeys::DeviceName, mcskeys::ConnectOnStartup,
                                       mcskeys::ForceConnect, mcskeys::NumberOfFreqChannels};

QString SavedPath(QLatin1String key) {
    const QString status = mcskeys::DefaultBasePath(mcskeys::Status);
    return mcskeys::Join(mcskeys::Join(status, serverkeys::SavedConfig), key);
}

void ShowText(QLatin1String key, const QString& text) {
    values::ProvideValue<values::Value<QString>>(SavedPath(key), text, true, nullptr);
}

void CopyContent(const values::TreeItem& from, QLatin1String key) {
    if (const auto* const text = dynamic_cast<const values::Value<QString>*>(&from))
        ShowText(key, text->GetValue());
    if (const auto* const flag = dynamic_cast<const values::Value<bool>*>(&from))
        values::ProvideValue<values::Value<bool>>(SavedPath(key), flag->GetValue(), true, nullptr);
    const auto* const number = dynamic_cast<const values::ValueNumeric<int>*>(&from);
    if (number != nullptr)
        values::ProvideValue<values::Value<int>>(SavedPath(key), number->GetValue(), true, nullptr);
}

}  // namespace

SavedConfig::SavedConfig(QString configPath) : m_configPath(std::move(configPath)) {
    ShowText(serverkeys::SavedSince, QString());
    ShowText(serverkeys::SavedBy, QString());
}

void SavedConfig::Show(const QString& moment, const QString& by) const {
    for (const QLatin1String key : SavedKeys) {
        const values::TreeItem* const item =
            values::Tree::Instance()->FindItem(mcskeys::Join(m_configPath, key));
        if (item != nullptr) CopyContent(*item, key);
    }
    ShowText(serverkeys::SavedSince, moment);
    ShowText(serverkeys::SavedBy, by);
}
