// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <cstdint>

/// What the server tells, as a code: one row of the table in eventcodes.cpp each, in the same order. The
/// codes of rows go over the wire and into stored files, so they stay; new ones go where they belong.
enum class ECode : std::uint8_t {
    // Of the server itself.
    ServerEnds,
    FewPlaces,
    FilesReadAnew,
    FilesStay,
    StationOffered,
    StationNotOffered,
    LeftOut,
    EventsLeftOut,
    // Who comes and goes, and who may not.
    Connected,
    Gone,
    NotAdmitted,
    MayNotWrite,
    MayNotCreate,
    MayNotUse,
    Uses,
    // The device.
    DeviceConnected,
    DeviceNotConnected,
    ConnectionLost,
    DeviceBoot,
    DeviceMode,
    DeviceLog,
    DeviceWanted,
    DeviceNotWanted,
    ReceiverLost,
    ReceiverBack,
    // MpxORVs.
    Tuned,
    TunedUnsupervised,
    RequestDone,
    RequestRefused,
    RequestEnded,
    IsMaster,
    IsMasterNoMore,
    Policies,
    PolicyGiven,
    PolicyTaken,
    ObeysBlanking,
    IgnoresBlanking,
    MpxOrvRemoved,
    StaticMpxOrvUnusable,
    // The configuration.
    ConfigSaved,
    ConfigNotSaved,
    ConfigEdited,
    ConfigFileValue,
    ConfigChanged,
    ConfigSecretChanged,
    FrequencyNotKept,
    ConfigUnusable,
    ConfigWrittenAnew,
    ConfigEditUnusable,
    ConfigCopyKept,
    // The suppression.
    ModuleFailed,
    ModuleAnswersAgain,
    ModulesConnectedAnew,
    NoModuleInError,
    ModuleAdded,
    ModuleDeleted,
    ModuleDisconnected,
    ModuleReconnected,
    ModuleChanged,
    RecoveryTakenOver,
    RecoveryPutAside,
    RecoveryInTheWay,
    EntriesAreSafe,
    EntriesWouldBeLost,
    SectionMistyped,
    SectionModulesUncounted,
    SectionCountUnusable,
    SectionModulesMissing,
    SectionModuleUnusable,
    SectionInputsUncounted,
    SectionFrequencyUnusable,
    SectionFrequencyOutside,
    SectionIndexTwice,
    SectionPutAside,
    SectionKeysUnknown,
    SectionMoreFaults,
    FirstPart,
    // Parts of others, and answers: nothing of this is an event by itself.
    Done = FirstPart,
    DoneUnsupervised,
    Refused,
    Ended,
    StayDisconnected,
    By,
    TakenAwayBy,
    LetGoBy,
    ItsFrequencies,
    InBrackets,
    Further,
    AndMore,
    LinesLeftOut,
    Peer,
    PeerOnMachine,
    NamelessPeer,
    NamelessPeerOnMachine,
    OfUser,
    AtServerWindow,
    Word,
    JobMaster,
    FfmAt,
    Both,
    TunedTo,
    ReadFromMaster,
    IsMasterNow,
    WasMaster,
    BuiltInTestStarted,
    CalibrationStarted,
    JobStartsAnew,
    ReportsEvery,
    NeedsPolicy,
    RightTaken,
    SupervisionEnded,
    SupervisionWanted,
    ProtectionEnded,
    ProtectionWanted,
    LostItsFrequency,
    WasTunedTo,
    MasterSince,
    MasterSinceNotInRange,
    NoReportInterval,
    DeviceOffline,
    DeviceNotReady,
    DeviceNotReadyYet,
    DeviceBusy,
    NoFreeChannel,
    NoSuchChannel,
    DeviceConnectedTo,
    DeviceLost,
    DeviceInUse,
    DeviceDoesNotAnswer,
    DeviceLetGo,
    NoReceiverConnection,
    ReceiverRejects,
    ReceiversAnswer,
    ReceiversConnecting,
    ReceiverIsLost,
    NoFreeChannelSomeLost,
    OutOfReceiverRange,
    NoBuiltInTest,
    NoCalibration,
    ReportsTooOften,
    TaskPassed,
    BlankedBy,
    BlankedByInput,
    BlankedBySomebody,
    WrongToken,
    WrongTokenOf,
    UnknownUser,
    NoUser,
    UnknownCertificate,
    WaitAfterFailures,
    TooManyChecks,
    NoRule,
    StatusIsTheServers,
    OnlyServerWrites,
    IsTheServers,
    NoSuchMpxOrv,
    OnlyClientsComment,
    OnlyOperatorsSwitch,
    NotOwnPolicies,
    NotPoliciesInUse,
    TooManyMpxOrvs,
    NoStaticMpxOrv,
    OfAnotherUser,
    NoMpxOrvName,
    TooManyDynamic,
    NameTaken,
    IsNoName,
    IsThereTwice,
    IsOneTooMany,
    TooLargeForFile,
    IsDamaged,
    IsOfAnotherConfiguration,
    IsOlder,
    CannotBeRead,
    IsMissing,
    ModuleName,
    ModuleType,
    ModuleAddress,
    ModulePollInterval,
    InputName,
    InputFrequency,
    Nothing,
    Count
};

/// How much an event matters: it is told, worth a look, something is amiss, or somebody has to act.
enum class EEventSeverity : std::uint8_t { Info, Notice, Warning, Alarm, Count };

namespace eventcodes {

/// Where an event is shown. The log has lines of its own for some, as it always had.
enum class EShown : std::uint8_t { Everywhere, InLogOnly, InEventsOnly };
/// Whose event it is. Of those of MpxORVs the name is told with the event.
enum class ESource : std::uint8_t { Server, Access, Device, MpxOrv, Config, Suppression };

struct Row {
    const char* code;     ///< on the wire
    const char* english;  ///< the sentence, with %1 to %9; also what translations are found by
    EEventSeverity severity = EEventSeverity::Info;
    ESource source = ESource::Server;
    EShown shown = EShown::Everywhere;
};

const Row& Of(ECode code);
/// The sentence of \a code with \a arguments, of which one may be a count: of one it is another.
const char* SentenceOf(ECode code, const QStringList& arguments);
/// ECode::Count if there is none such.
ECode Find(const QString& code);
/// The word for \a severity on the wire: "info", "notice", "warning", "alarm".
QLatin1String SeverityName(EEventSeverity severity);
/// Info for a word that is not known.
EEventSeverity FindSeverity(const QString& name);
/// The word for \a source on the wire: "device"; of ESource::MpxOrv what stands before its name.
QLatin1String SourceName(ESource source);

}  // namespace eventcodes
