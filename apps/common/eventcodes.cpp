// SPDX-License-Identifier: Apache-2.0
#include <apps/common/eventcodes.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QHash>

#include <array>
#include <cstddef>

namespace {

using eventcodes::EShown;
using eventcodes::ESource;

constexpr EEventSeverity Info = EEventSeverity::Info;
constexpr EEventSeverity Notice = EEventSeverity::Notice;
constexpr EEventSeverity Warning = EEventSeverity::Warning;
constexpr EEventSeverity Alarm = EEventSeverity::Alarm;

// The English sentences are what the log shows to the letter: scripts of sites search it.
// clang-format off
constexpr std::array<eventcodes::Row, static_cast<std::size_t>(ECode::Count)> EventRows = {{
    {"server-ends", QT_TRANSLATE_NOOP("CodedText", "the server ends"), Notice, ESource::Server},
    {"few-places", QT_TRANSLATE_NOOP("CodedText", "no more than %1 clients find room at once, and not %2: the process may have only %3 files and connections open"), Warning, ESource::Server},
    {"files-read-anew", QT_TRANSLATE_NOOP("CodedText", "access file and certificates are read anew"), Notice, ESource::Access},
    {"files-stay", QT_TRANSLATE_NOOP("CodedText", "access file and certificates stay as they were: %1"), Warning, ESource::Access},
    {"station-offered", QT_TRANSLATE_NOOP("CodedText", "offered at NATS as the station %1"), Notice, ESource::Server},
    {"station-not-offered", QT_TRANSLATE_NOOP("CodedText", "not offered at NATS as the station %1: %2"), Warning, ESource::Server},
    {"left-out", QT_TRANSLATE_NOOP("CodedText", "%1 lines left out, most of them of %2"), Warning, ESource::Server},
    {"events-left-out", QT_TRANSLATE_NOOP("CodedText", "%1 events left out, most of them of %2"), Warning, ESource::Server, EShown::InEventsOnly},

    {"connected", QT_TRANSLATE_NOOP("CodedText", "%1 is connected as %2"), Info, ESource::Access},
    {"gone", QT_TRANSLATE_NOOP("CodedText", "%1 has gone"), Info, ESource::Access},
    {"not-admitted", QT_TRANSLATE_NOOP("CodedText", "%1 is not admitted: %2"), Warning, ESource::Access},
    {"may-not-write", QT_TRANSLATE_NOOP("CodedText", "%1 may not write %2: %3"), Warning, ESource::Access},
    {"may-not-create", QT_TRANSLATE_NOOP("CodedText", "%1 may not create %2: %3"), Warning, ESource::Access},
    {"may-not-use", QT_TRANSLATE_NOOP("CodedText", "%1 may not use %2: %3"), Warning, ESource::Access},
    {"uses", QT_TRANSLATE_NOOP("CodedText", "%1 uses %2"), Info, ESource::MpxOrv},

    {"device-connected", QT_TRANSLATE_NOOP("CodedText", "ORV: %1"), Notice, ESource::Device},
    {"device-not-connected", QT_TRANSLATE_NOOP("CodedText", "ORV: %1"), Notice, ESource::Device},
    {"connection-lost", QT_TRANSLATE_NOOP("CodedText", "ORV: %1"), Alarm, ESource::Device},
    {"device-boot", QT_TRANSLATE_NOOP("CodedText", "ORV: %1"), Info, ESource::Device},
    {"device-mode", QT_TRANSLATE_NOOP("CodedText", "ORV: operation mode %1"), Info, ESource::Device},
    {"device-log", QT_TRANSLATE_NOOP("CodedText", "ORV: %1"), Info, ESource::Device},
    {"device-wanted", QT_TRANSLATE_NOOP("CodedText", "the ORV is to be connected%1"), Notice, ESource::Device},
    {"device-not-wanted", QT_TRANSLATE_NOOP("CodedText", "the ORV is to be let go%1"), Notice, ESource::Device},
    {"receiver-lost", QT_TRANSLATE_NOOP("CodedText", "ORV: receiver %1 is lost: %2"), Alarm, ESource::Device},
    {"receiver-back", QT_TRANSLATE_NOOP("CodedText", "ORV: receiver %1 answers again"), Notice, ESource::Device},

    {"tuned", QT_TRANSLATE_NOOP("CodedText", "%2 is tuned to %1"), Info, ESource::MpxOrv, EShown::InEventsOnly},
    {"tuned-unsupervised", QT_TRANSLATE_NOOP("CodedText", "%2 is tuned to %1, not supervised"), Warning, ESource::MpxOrv, EShown::InEventsOnly},
    {"request-done", QT_TRANSLATE_NOOP("CodedText", "%1: %2"), Info, ESource::MpxOrv, EShown::InEventsOnly},
    {"request-refused", QT_TRANSLATE_NOOP("CodedText", "%1: %2"), Notice, ESource::MpxOrv},
    {"request-ended", QT_TRANSLATE_NOOP("CodedText", "%1: %2"), Warning, ESource::MpxOrv, EShown::InEventsOnly},
    {"is-master", QT_TRANSLATE_NOOP("CodedText", "%1 is master"), Notice, ESource::MpxOrv},
    {"is-master-no-more", QT_TRANSLATE_NOOP("CodedText", "%1 is master no more"), Notice, ESource::MpxOrv},
    {"policies", QT_TRANSLATE_NOOP("CodedText", "policies of %1: %2%3"), Notice, ESource::MpxOrv, EShown::InLogOnly},
    {"policy-given", QT_TRANSLATE_NOOP("CodedText", "%2 of %1 is switched from off to on%3"), Notice, ESource::MpxOrv, EShown::InEventsOnly},
    {"policy-taken", QT_TRANSLATE_NOOP("CodedText", "%2 of %1 is switched from on to off%3"), Notice, ESource::MpxOrv, EShown::InEventsOnly},
    {"obeys-blanking", QT_TRANSLATE_NOOP("CodedText", "%1 obeys the blanking%2"), Notice, ESource::MpxOrv},
    {"ignores-blanking", QT_TRANSLATE_NOOP("CodedText", "%1 ignores the blanking%2"), Warning, ESource::MpxOrv},
    {"mpxorv-removed", QT_TRANSLATE_NOOP("CodedText", "%1 is removed, its last client has gone"), Info, ESource::MpxOrv},
    {"static-unusable", QT_TRANSLATE_NOOP("CodedText", "StaticMpxORVs: '%1' %2"), Warning, ESource::Config},

    {"config-saved", QT_TRANSLATE_NOOP("CodedText", "the configuration is saved"), Info, ESource::Config},
    {"config-not-saved", QT_TRANSLATE_NOOP("CodedText", "the configuration cannot be saved: %1"), Alarm, ESource::Config},
    {"config-edited", QT_TRANSLATE_NOOP("CodedText", "the configuration file was edited: %1; in use from the next start on"), Notice, ESource::Config},
    {"config-file-value", QT_TRANSLATE_NOOP("CodedText", "the configuration file holds %1 as %2%3; %4 is used"), Warning, ESource::Config},
    {"config-changed", QT_TRANSLATE_NOOP("CodedText", "%1 is changed from %2 to %3%4"), Notice, ESource::Config, EShown::InEventsOnly},
    {"config-secret-changed", QT_TRANSLATE_NOOP("CodedText", "%1 is changed%2"), Notice, ESource::Config, EShown::InEventsOnly},
    {"frequency-not-kept", QT_TRANSLATE_NOOP("CodedText", "%1 of %2 Hz cannot be kept: the configuration file holds whole hertz up to 2147483647, so it holds %3"), Warning, ESource::Config},
    {"config-unusable", QT_TRANSLATE_NOOP("CodedText", "the configuration file '%1' cannot be used (%2); defaults are used, so that nothing is supervised, and the file is kept as '%3'"), Alarm, ESource::Config},
    {"config-written-anew", QT_TRANSLATE_NOOP("CodedText", "the configuration file '%1' cannot be used any more (%2); what is known is written anew, and the file is kept as '%3'"), Warning, ESource::Config},
    {"config-edit-unusable", QT_TRANSLATE_NOOP("CodedText", "the configuration file '%1' was edited, and cannot be used any more (%2); the next save writes what is known anew"), Warning, ESource::Config},
    {"config-copy-kept", QT_TRANSLATE_NOOP("CodedText", "a copy of the configuration file as it is now is kept as '%1'"), Notice, ESource::Config},

    {"module-failed", QT_TRANSLATE_NOOP("CodedText", "GTS DataModule %1/%2 error: %3 (%4)%5"), Alarm, ESource::Suppression},
    {"module-answers-again", QT_TRANSLATE_NOOP("CodedText", "GTS DataModule %1/%2 answers again; it stays in error until it is connected"), Warning, ESource::Suppression},
    {"modules-connected-anew", QT_TRANSLATE_NOOP("CodedText", "data modules in error are connected anew: %1%3%2"), Notice, ESource::Suppression},
    {"no-module-in-error", QT_TRANSLATE_NOOP("CodedText", "no data module is in error%2%1"), Notice, ESource::Suppression},
    {"module-added", QT_TRANSLATE_NOOP("CodedText", "data module %1 at %2 is added%3"), Notice, ESource::Suppression, EShown::InEventsOnly},
    {"module-deleted", QT_TRANSLATE_NOOP("CodedText", "data module %1 at %2 is deleted%4%3"), Warning, ESource::Suppression, EShown::InEventsOnly},
    {"module-disconnected", QT_TRANSLATE_NOOP("CodedText", "data module %1 at %2 is disconnected%3"), Warning, ESource::Suppression, EShown::InEventsOnly},
    {"module-reconnected", QT_TRANSLATE_NOOP("CodedText", "data module %1 at %2 is connected anew%3"), Notice, ESource::Suppression, EShown::InEventsOnly},
    {"module-changed", QT_TRANSLATE_NOOP("CodedText", "data module %1: %2 is changed from %3 to %4%5"), Notice, ESource::Suppression, EShown::InEventsOnly},
    {"recovery-taken-over", QT_TRANSLATE_NOOP("CodedText", "the last end was not an orderly one: what was entered for the suppression until %1 (data modules: %2) is taken over from '%3'"), Warning, ESource::Suppression},
    {"recovery-put-aside", QT_TRANSLATE_NOOP("CodedText", "the recovery file of the suppression %1%2; it is not used, and kept as '%3'"), Warning, ESource::Suppression},
    {"recovery-in-the-way", QT_TRANSLATE_NOOP("CodedText", "the recovery file of the suppression '%1' %2%3; it is not used, and what is entered from now on is not kept beside it"), Warning, ESource::Suppression},
    {"entries-are-safe", QT_TRANSLATE_NOOP("CodedText", "what is entered for the suppression would outlive a killed server again"), Notice, ESource::Suppression},
    {"entries-would-be-lost", QT_TRANSLATE_NOOP("CodedText", "what is entered for the suppression would be lost with a killed server: %1"), Warning, ESource::Suppression},
    {"section-mistyped", QT_TRANSLATE_NOOP("CodedText", "the configuration has a section '%1', which is not read: the suppression is '%2'"), Alarm, ESource::Suppression},
    {"section-modules-uncounted", QT_TRANSLATE_NOOP("CodedText", "GTS in the configuration: ModuleCount is %1, so these are not read and nothing of them is supervised: %2"), Alarm, ESource::Suppression},
    {"section-count-unusable", QT_TRANSLATE_NOOP("CodedText", "GTS in the configuration: ModuleCount is %1, so no data module is read"), Alarm, ESource::Suppression},
    {"section-modules-missing", QT_TRANSLATE_NOOP("CodedText", "GTS in the configuration: ModuleCount is %1, and nothing is there of: %2"), Alarm, ESource::Suppression},
    {"section-module-unusable", QT_TRANSLATE_NOOP("CodedText", "GTS in the configuration: %1 is left out and nothing of it is supervised: its %2 is %3"), Alarm, ESource::Suppression},
    {"section-inputs-uncounted", QT_TRANSLATE_NOOP("CodedText", "GTS in the configuration: AssignmentCount of %1 is %2, and it has %3 inputs; these are not read and not supervised: %4"), Alarm, ESource::Suppression},
    {"section-frequency-unusable", QT_TRANSLATE_NOOP("CodedText", "GTS in the configuration: %1 is %2, which are no whole hertz; taken is: %3"), Alarm, ESource::Suppression},
    {"section-frequency-outside", QT_TRANSLATE_NOOP("CodedText", "GTS in the configuration: %1 is %2 Hz, to which nobody can be tuned"), Warning, ESource::Suppression},
    {"section-index-twice", QT_TRANSLATE_NOOP("CodedText", "GTS in the configuration: %1 has the index %2 of another module; %3 is used"), Warning, ESource::Suppression},
    {"section-put-aside", QT_TRANSLATE_NOOP("CodedText", "GTS in the configuration: what could not be used once is kept below NotLoaded, and not supervised: %1"), Warning, ESource::Suppression},
    {"section-keys-unknown", QT_TRANSLATE_NOOP("CodedText", "GTS in the configuration: these keys are not known and not read: %1"), Warning, ESource::Suppression},
    {"section-more-faults", QT_TRANSLATE_NOOP("CodedText", "GTS in the configuration: further faults: %1"), Warning, ESource::Suppression},

    {"done", QT_TRANSLATE_NOOP("CodedText", "done: %1")},
    {"done-unsupervised", QT_TRANSLATE_NOOP("CodedText", "done, not supervised: %1")},
    {"refused", QT_TRANSLATE_NOOP("CodedText", "refused: %1")},
    {"ended", QT_TRANSLATE_NOOP("CodedText", "ended: %1")},
    {"stay-disconnected", QT_TRANSLATE_NOOP("CodedText", "; disconnected by hand, and stay so: %1")},
    {"by", QT_TRANSLATE_NOOP("CodedText", ", by %1")},
    {"taken-away-by", QT_TRANSLATE_NOOP("CodedText", ", taken away by %1")},
    {"let-go-by", QT_TRANSLATE_NOOP("CodedText", ", let go by %1")},
    {"its-frequencies", QT_TRANSLATE_NOOP("CodedText", " with its frequencies %1")},
    {"in-brackets", " (%1)"},
    {"further", ": %1"},
    {"and-more", QT_TRANSLATE_NOOP("CodedText", "%1 and %2 more")},
    {"lines-left-out", QT_TRANSLATE_NOOP("CodedText", "%1 (%2 lines left out before)")},
    {"peer", "%1 (%2)"},
    {"peer-on-machine", QT_TRANSLATE_NOOP("CodedText", "%1 on %2 (%3)")},
    {"nameless-peer", QT_TRANSLATE_NOOP("CodedText", "a client (%1)")},
    {"nameless-peer-on-machine", QT_TRANSLATE_NOOP("CodedText", "a client on %1 (%2)")},
    {"of-user", QT_TRANSLATE_NOOP("CodedText", "%1 of %2")},
    {"at-server-window", QT_TRANSLATE_NOOP("CodedText", "%1 at the server's window")},
    {"word", "%1"},
    {"job-master", QT_TRANSLATE_NOOP("CodedText", "Job master")},
    {"ffm-at", QT_TRANSLATE_NOOP("CodedText", "FFM %1")},
    {"both", "%1, %2"},
    {"tuned-to", QT_TRANSLATE_NOOP("CodedText", "tuned to %1")},
    {"read-from-master", QT_TRANSLATE_NOOP("CodedText", "%1 is read from the range of %2")},
    {"is-master-now", QT_TRANSLATE_NOOP("CodedText", "is master")},
    {"was-master", QT_TRANSLATE_NOOP("CodedText", "is master no more")},
    {"built-in-test-started", QT_TRANSLATE_NOOP("CodedText", "built-in test started")},
    {"calibration-started", QT_TRANSLATE_NOOP("CodedText", "calibration started")},
    {"job-starts-anew", QT_TRANSLATE_NOOP("CodedText", "the job starts anew")},
    {"reports-every", QT_TRANSLATE_NOOP("CodedText", "reports every %1 ms")},
    {"needs-policy", QT_TRANSLATE_NOOP("CodedText", "needs %1%2")},
    {"right-taken", QT_TRANSLATE_NOOP("CodedText", "the right %1%2")},
    {"supervision-ended", QT_TRANSLATE_NOOP("CodedText", "the supervision of %1%2")},
    {"supervision-wanted", QT_TRANSLATE_NOOP("CodedText", "%1 is to be supervised%2")},
    {"protection-ended", QT_TRANSLATE_NOOP("CodedText", "the protection by the ground transmitter suppression%1")},
    {"protection-wanted", QT_TRANSLATE_NOOP("CodedText", "the ground transmitter suppression holds again%1")},
    {"lost-its-frequency", QT_TRANSLATE_NOOP("CodedText", "%1 lost its frequency")},
    {"was-tuned-to", QT_TRANSLATE_NOOP("CodedText", "%1 was tuned to %2")},
    {"master-since", QT_TRANSLATE_NOOP("CodedText", "%1 is master since %2")},
    {"master-since-not-in-range", QT_TRANSLATE_NOOP("CodedText", "%1 is master since %2, and %3 is not in its range")},
    {"no-report-interval", QT_TRANSLATE_NOOP("CodedText", "no report interval was chosen")},
    {"device-offline", QT_TRANSLATE_NOOP("CodedText", "the ORV is not connected%1")},
    {"device-not-ready", QT_TRANSLATE_NOOP("CodedText", "the ORV is not ready: %1%2")},
    {"device-not-ready-yet", QT_TRANSLATE_NOOP("CodedText", "the ORV is not ready")},
    {"device-busy", QT_TRANSLATE_NOOP("CodedText", "the ORV is busy: %1")},
    {"no-free-channel", QT_TRANSLATE_NOOP("CodedText", "no frequency channel is free, %1 are in use")},
    {"no-such-channel", QT_TRANSLATE_NOOP("CodedText", "there is no such channel")},
    {"device-connected-to", QT_TRANSLATE_NOOP("CodedText", "connected to %1 at %2")},
    {"device-lost", QT_TRANSLATE_NOOP("CodedText", "connection lost: %1")},
    {"device-in-use", QT_TRANSLATE_NOOP("CodedText", "in use by %1")},
    {"device-does-not-answer", QT_TRANSLATE_NOOP("CodedText", "the device does not answer")},
    {"device-let-go", QT_TRANSLATE_NOOP("CodedText", "not connected")},
    {"no-receiver-connection", QT_TRANSLATE_NOOP("CodedText", "no connection")},
    {"receiver-rejects", QT_TRANSLATE_NOOP("CodedText", "the receiver does not take it: %1")},
    {"receivers-answer", QT_TRANSLATE_NOOP("CodedText", "%1 of %2 receivers answer (%3)")},
    {"receivers-connecting", QT_TRANSLATE_NOOP("CodedText", "connecting to receivers (%1)")},
    {"receiver-is-lost", QT_TRANSLATE_NOOP("CodedText", "receiver %1 is lost: %2")},
    {"no-free-channel-some-lost", QT_TRANSLATE_NOOP("CodedText", "no frequency channel is free, %1 are in use and %2 are lost")},
    {"out-of-receiver-range", QT_TRANSLATE_NOOP("CodedText", "receiver %1 receives %2 only")},
    {"no-built-in-test", QT_TRANSLATE_NOOP("CodedText", "the ORV has no built-in test")},
    {"no-calibration", QT_TRANSLATE_NOOP("CodedText", "the ORV cannot be calibrated")},
    {"reports-too-often", QT_TRANSLATE_NOOP("CodedText", "the ORV reports every %1 ms at most")},
    {"task-passed", QT_TRANSLATE_NOOP("CodedText", "%1 passed")},
    {"blanked-by", QT_TRANSLATE_NOOP("CodedText", "%1 is blanked by %2")},
    {"blanked-by-input", QT_TRANSLATE_NOOP("CodedText", "%1, input %2")},
    {"blanked-by-somebody", QT_TRANSLATE_NOOP("CodedText", "a ground transmitter")},
    {"wrong-token", QT_TRANSLATE_NOOP("CodedText", "user or token is wrong")},
    {"wrong-token-of", QT_TRANSLATE_NOOP("CodedText", "the token is not that of %1")},
    {"unknown-user", QT_TRANSLATE_NOOP("CodedText", "the user is not known here")},
    {"no-user", QT_TRANSLATE_NOOP("CodedText", "no user is given")},
    {"unknown-certificate", QT_TRANSLATE_NOOP("CodedText", "the certificate's name is not known here")},
    {"wait-after-failures", QT_TRANSLATE_NOOP("CodedText", "too many failed attempts, wait %1 s")},
    {"too-many-checks", QT_TRANSLATE_NOOP("CodedText", "too many tokens are to be checked at once, try again")},
    {"no-rule", QT_TRANSLATE_NOOP("CodedText", "no rule of this server allows it")},
    {"status-is-the-servers", QT_TRANSLATE_NOOP("CodedText", "the status is the server's own")},
    {"only-server-writes", QT_TRANSLATE_NOOP("CodedText", "only the server writes this")},
    {"is-the-servers", QT_TRANSLATE_NOOP("CodedText", "what is below %1 is the server's own")},
    {"no-such-mpxorv", QT_TRANSLATE_NOOP("CodedText", "there is no such MpxORV")},
    {"only-clients-comment", QT_TRANSLATE_NOOP("CodedText", "only clients of the MpxORV comment on it")},
    {"only-operators-switch", QT_TRANSLATE_NOOP("CodedText", "only operators switch policies")},
    {"not-own-policies", QT_TRANSLATE_NOOP("CodedText", "%1 uses this MpxORV, and no rule allows it to switch policies of its own")},
    {"not-policies-in-use", QT_TRANSLATE_NOOP("CodedText", "nobody switches the policies of an MpxORV that it uses")},
    {"too-many-mpxorvs", QT_TRANSLATE_NOOP("CodedText", "a client may use %1 MpxORVs at most")},
    {"no-static-mpxorv", QT_TRANSLATE_NOOP("CodedText", "there is no static MpxORV '%1'")},
    {"of-another-user", QT_TRANSLATE_NOOP("CodedText", "%1 belongs to another user")},
    {"no-mpxorv-name", QT_TRANSLATE_NOOP("CodedText", "this cannot be the name of an MpxORV")},
    {"too-many-dynamic", QT_TRANSLATE_NOOP("CodedText", "there are %1 dynamic MpxORVs already")},
    {"name-taken", QT_TRANSLATE_NOOP("CodedText", "something else has the name %1")},
    {"is-no-name", QT_TRANSLATE_NOOP("CodedText", "cannot be the name of an MpxORV")},
    {"is-there-twice", QT_TRANSLATE_NOOP("CodedText", "is there twice")},
    {"is-one-too-many", QT_TRANSLATE_NOOP("CodedText", "is one too many")},
    {"too-large-for-file", QT_TRANSLATE_NOOP("CodedText", ", which stands for a frequency above 2147483647 Hz")},
    {"is-damaged", QT_TRANSLATE_NOOP("CodedText", "is damaged")},
    {"is-of-another-configuration", QT_TRANSLATE_NOOP("CodedText", "is of another configuration")},
    {"is-older", QT_TRANSLATE_NOOP("CodedText", "is older than the configuration, whose section GTS was changed since")},
    {"cannot-be-read", QT_TRANSLATE_NOOP("CodedText", "cannot be read")},
    {"is-missing", QT_TRANSLATE_NOOP("CodedText", "missing")},
    {"module-name", QT_TRANSLATE_NOOP("CodedText", "its name")},
    {"module-type", QT_TRANSLATE_NOOP("CodedText", "its type")},
    {"module-address", QT_TRANSLATE_NOOP("CodedText", "its address")},
    {"module-poll-interval", QT_TRANSLATE_NOOP("CodedText", "its poll interval")},
    {"input-name", QT_TRANSLATE_NOOP("CodedText", "the name of input %1")},
    {"input-frequency", QT_TRANSLATE_NOOP("CodedText", "the frequency of input %1")},
    {"nothing", QT_TRANSLATE_NOOP("CodedText", "nothing")},
}};

/// The sentence where an argument is 1.
struct RowOfOne {
    ECode code;
    int argument;
    const char* english;
};

constexpr RowOfOne RowsOfOne[] = {
    {ECode::LeftOut, 0, QT_TRANSLATE_NOOP("CodedText", "%1 line left out, of %2")},
    {ECode::EventsLeftOut, 0, QT_TRANSLATE_NOOP("CodedText", "%1 event left out, of %2")},
    {ECode::LinesLeftOut, 1, QT_TRANSLATE_NOOP("CodedText", "%1 (%2 line left out before)")},
};
// clang-format on

constexpr std::array<const char*, static_cast<std::size_t>(EEventSeverity::Count)> SeverityNames = {
    "info", "notice", "warning", "alarm"};

QHash<QString, ECode> CodesByName() {
    QHash<QString, ECode> codes;
    for (std::size_t i = 0; i < EventRows.size(); ++i)
        codes.insert(QLatin1String(EventRows[i].code), static_cast<ECode>(i));
    return codes;
}

}  // namespace

const eventcodes::Row& eventcodes::Of(ECode code) {
    return EventRows.at(static_cast<std::size_t>(code));
}

const char* eventcodes::SentenceOf(ECode code, const QStringList& arguments) {
    for (const RowOfOne& row : RowsOfOne)
        if (row.code == code && arguments.value(row.argument) == QLatin1String("1")) return row.english;
    return Of(code).english;
}

ECode eventcodes::Find(const QString& code) {
    static const auto& codes = *new const QHash<QString, ECode>(CodesByName());
    return codes.value(code, ECode::Count);
}

QLatin1String eventcodes::SeverityName(EEventSeverity severity) {
    return QLatin1String(SeverityNames.at(static_cast<std::size_t>(severity)));
}

EEventSeverity eventcodes::FindSeverity(const QString& name) {
    for (std::size_t i = 0; i < SeverityNames.size(); ++i)
        if (name == QLatin1String(SeverityNames.at(i))) return static_cast<EEventSeverity>(i);
    return EEventSeverity::Info;
}

QLatin1String eventcodes::SourceName(ESource source) {
    switch (source) {
        case ESource::Access:
            return QLatin1String("access");
        case ESource::Device:
            return QLatin1String("device");
        case ESource::MpxOrv:
            return QLatin1String("MpxORV");
        case ESource::Config:
            return QLatin1String("config");
        case ESource::Suppression:
            return QLatin1String("suppression");
        case ESource::Server:
            break;
    }
    return QLatin1String("server");
}
