// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/hamlib/module/hamlibrig.h>

#include <algorithm>
#include <csignal>
#include <mutex>

namespace {

/// Hamlib keeps what it knows of models in one place for all threads.
std::mutex& ModelsMutex() {
    static auto& mutex = *new std::mutex;
    return mutex;
}

RigOutcome OutcomeOf(int code) {
    using EFault = RigOutcome::EFault;
    if (code >= RIG_OK) return {};
    const QString text = QString::fromUtf8(rigerror2(code)).simplified();
    switch (-code) {
        case RIG_ETIMEOUT:
            return {EFault::NoAnswer, text};
        case RIG_EIO:
            return {EFault::NoConnection, text};
        case RIG_EINVAL:
        case RIG_ENIMPL:
        case RIG_ERJCTED:
        case RIG_ETRUNC:
        case RIG_ENAVAIL:
        case RIG_ENTARGET:
        case RIG_EVFO:
        case RIG_EDOM:
            return {EFault::Rejected, text};
        default:
            return {EFault::Other, text};
    }
}

/// Whoever writes to a receiver that has gone is told by the call, as long as no signal ends the process.
void IgnoreBrokenPipes() {
    sigset_t brokenPipe;
    sigemptyset(&brokenPipe);
    sigaddset(&brokenPipe, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &brokenPipe, nullptr);
}

}  // namespace

HamlibRig::HamlibRig(const HamlibSettings& settings, const QString& port)
    : m_settings(settings), m_port(port) {}

HamlibRig::~HamlibRig() {
    Close();
}

RigOutcome HamlibRig::Open() {
    IgnoreBrokenPipes();
    Close();
    {
        const std::lock_guard<std::mutex> lock(ModelsMutex());
        m_rig = rig_init(static_cast<rig_model_t>(m_settings.model));
    }
    if (m_rig == nullptr) return {RigOutcome::EFault::Other, QStringLiteral("Hamlib has no such model")};
    RigOutcome outcome = Configure();
    if (outcome.IsDone()) outcome = OutcomeOf(rig_open(m_rig));
    if (outcome.IsDone()) {
        NoteWhatItReceives();
    } else {
        rig_cleanup(m_rig);
        m_rig = nullptr;
    }
    return outcome;
}

RigOutcome HamlibRig::SetConf(const char* name, const QString& value) {
    return OutcomeOf(rig_set_conf(m_rig, rig_token_lookup(m_rig, name), value.toLocal8Bit().constData()));
}

// Who waits for an answer learns within seconds that none comes, however patient Hamlib would be.
RigOutcome HamlibRig::Configure() {
    constexpr int LongestTimeoutMs = 1000;
    constexpr int MostRetries = 1;
    const rig_caps& caps = *m_rig->caps;
    SetConf("timeout", QString::number(std::clamp(caps.timeout, 1, LongestTimeoutMs)));
    SetConf("retry", QString::number(std::clamp(int(caps.retry), 0, MostRetries)));
    if (!m_port.isEmpty()) {
        const RigOutcome outcome = SetConf("rig_pathname", m_port);
        if (!outcome.IsDone()) return outcome;
    }
    if (m_settings.speed != 0) {
        const RigOutcome outcome = SetConf("serial_speed", QString::number(m_settings.speed));
        if (!outcome.IsDone()) return outcome;
    }
    return OutcomeOf(rig_set_cache_timeout_ms(m_rig, HAMLIB_CACHE_ALL, 0));
}

void HamlibRig::NoteWhatItReceives() {
    m_ranges.clear();
    for (const freq_range_t& range : m_rig->state.rx_range_list) {
        if (range.startf == 0 && range.endf == 0) break;
        m_ranges.push_back({range.startf, range.endf});
    }
    const rmode_t mode = rig_parse_mode(m_settings.mode.toLatin1().constData());
    m_bandwidth =
        static_cast<double>(m_settings.width != 0 ? m_settings.width : rig_passband_normal(m_rig, mode));
}

void HamlibRig::Close() {
    if (m_rig == nullptr) return;
    rig_close(m_rig);
    rig_cleanup(m_rig);
    m_rig = nullptr;
}

RigOutcome HamlibRig::Tune(double hz) {
    if (m_rig == nullptr) return {RigOutcome::EFault::NoConnection, QString()};
    RigOutcome outcome = OutcomeOf(rig_set_freq(m_rig, RIG_VFO_CURR, hz));
    if (!outcome.IsDone()) return outcome;
    // After the frequency, since some receivers remember a mode for each band.
    const rmode_t mode = rig_parse_mode(m_settings.mode.toLatin1().constData());
    const pbwidth_t width = m_settings.width != 0 ? m_settings.width : pbwidth_t(RIG_PASSBAND_NORMAL);
    const int code = rig_set_mode(m_rig, RIG_VFO_CURR, mode, width);
    const bool hasNoModes = code == -RIG_ENAVAIL || code == -RIG_ENIMPL;
    return hasNoModes ? RigOutcome() : OutcomeOf(code);
}

RigOutcome HamlibRig::Read(RigReading* reading) {
    if (m_rig == nullptr) return {RigOutcome::EFault::NoConnection, QString()};
    freq_t hz = 0;
    RigOutcome outcome = OutcomeOf(rig_get_freq(m_rig, RIG_VFO_CURR, &hz));
    if (!outcome.IsDone()) return outcome;
    reading->hz = hz;
    rmode_t mode = RIG_MODE_NONE;
    pbwidth_t width = 0;
    outcome = OutcomeOf(rig_get_mode(m_rig, RIG_VFO_CURR, &mode, &width));
    if (outcome.IsLost()) return outcome;
    if (outcome.IsDone()) reading->mode = QString::fromLatin1(rig_strrmode(mode));
    value_t level{};
    outcome = OutcomeOf(rig_get_level(m_rig, RIG_VFO_CURR, RIG_LEVEL_STRENGTH, &level));
    if (outcome.IsLost()) return outcome;
    if (outcome.IsDone()) reading->strength = level.i;
    return {};
}
