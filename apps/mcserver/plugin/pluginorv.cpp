// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/plugin/pluginorv.h>

#include <apps/mcserver/device/iorvdevicelistener.h>

#include <algorithm>
#include <cmath>
#include <utility>

PluginOrv::PluginOrv(std::unique_ptr<IOrvDriver> driver) : m_driver(std::move(driver)) {
    m_driver->SetListener(this);
}

PluginOrv::~PluginOrv() {
    m_driver->SetListener(nullptr);
}

void PluginOrv::Connect(const OrvDeviceSettings& settings) {
    m_isHeld = true;
    m_driver->Connect(settings);
}

void PluginOrv::Disconnect() {
    m_isHeld = false;
    m_driver->Disconnect();
}

double PluginOrv::GetBandwidth() const {
    const double hz = m_driver->GetBandwidth();
    return std::isfinite(hz) ? std::max(hz, 0.0) : 0.0;
}

void PluginOrv::Tell(const Notice& notice) {
    if (!m_isAsking && m_waiting.empty()) {
        if (m_listener != nullptr) notice(*m_listener);
        return;
    }
    if (m_waiting.empty())
        QMetaObject::invokeMethod(
            &m_context, [this] { TellWhatWaits(); }, Qt::QueuedConnection);
    m_waiting.push_back(notice);
}

void PluginOrv::TellWhatWaits() {
    for (std::size_t i = 0; i < m_waiting.size(); ++i) {  // what is told meanwhile comes behind
        const Notice notice = m_waiting[i];
        if (m_listener != nullptr) notice(*m_listener);
    }
    m_waiting.clear();
}

// What goes although it is to be held is lost, and somebody has to see to it.
void PluginOrv::OnConnectionChanged(bool isOnline, const QString& state) {
    const bool isLost = !isOnline && m_isHeld && m_wasOnline;
    m_wasOnline = isOnline;
    const CodedText text = isLost ? CodedText(ECode::DeviceLost, {state}) : CodedText(state);
    Tell([=](IOrvDeviceListener& listener) { listener.OnConnectionChanged(isOnline, text); });
}

void PluginOrv::OnBootStateChanged(EBooState state) {
    Tell([=](IOrvDeviceListener& listener) { listener.OnBootStateChanged(state); });
}

void PluginOrv::OnOperationModeChanged(EOperationMode mode) {
    Tell([=](IOrvDeviceListener& listener) { listener.OnOperationModeChanged(mode); });
}

void PluginOrv::OnSweepTimeChanged(std::chrono::microseconds time) {
    Tell([=](IOrvDeviceListener& listener) { listener.OnSweepTimeChanged(std::max(time, time.zero())); });
}

void PluginOrv::OnChannelsChanged(int free, int used) {
    Tell([=](IOrvDeviceListener& listener) {
        listener.OnChannelsChanged(std::max(free, 0), std::max(used, 0));
    });
}

void PluginOrv::OnReportIntervalChanged(std::chrono::milliseconds interval) {
    Tell([=](IOrvDeviceListener& listener) { listener.OnReportIntervalChanged(interval); });
}

void PluginOrv::OnChannelLost(int channel, const QString& reason) {
    Tell([=](IOrvDeviceListener& listener) { listener.OnChannelLost(channel, reason); });
}

void PluginOrv::OnLog(const QString& text) {
    Tell([=](IOrvDeviceListener& listener) { listener.OnLog(text); });
}
