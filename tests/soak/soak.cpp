// SPDX-License-Identifier: Apache-2.0
#include <tests/soak/soak.h>

#include <tests/soak/words.h>

#include <algorithm>
#include <numeric>

namespace soak {

namespace {

constexpr int TickMs = 5;
constexpr int PatienceMs = 20000;  // for what has to happen soon
constexpr int LastPatienceMs = 3 * PatienceMs;
constexpr int PowerCutEveryMs = 20000;
constexpr int CountEveryMs = 1000;
constexpr int AttemptEveryMs = 200;  // an operator does not click faster

const QString Connected = QStringLiteral("Connected");
const QString Error = QStringLiteral("Error");

}  // namespace

Soak::Soak(const Settings& settings, Plant& plant)
    : m_settings(settings),
      m_plant(plant),
      m_matrix(settings.responseTimeout),
      m_random(settings.seed),
      m_modules(static_cast<std::size_t>(plant.Count())),
      m_nextPowerCut(PowerCutEveryMs / 4) {
    m_clock.start();
    for (int number = 0; number < plant.Count(); ++number) {
        At(number).fault = FaultMatrix::NoFault;
        Enter(number, EPhase::Recovering, PatienceMs);
    }
    m_operator =
        std::make_unique<OperatorHands>([this](int number, const QString& text) { OnError(number, text); });
    m_witness = std::make_unique<Witness>(plant);
    connect(&m_timer, &QTimer::timeout, this, &Soak::Tick);
    m_timer.start(TickMs);
}

void Soak::Tick() {
    if (m_operator->IsBusy()) return;
    m_witness->CompareBlanking();
    LookAtWarnings();
    if (m_plant.IsListening()) WorkThePlant();
    if (m_power == EPower::On || m_power == EPower::Failing)
        for (int number = 0; number < m_plant.Count(); ++number)
            Step(number);
    StepPower();
    if (IsOver() && m_power == EPower::On && AreAllHealthy()) return Finish();
    if (Now() < qint64{m_settings.seconds} * 1000 + LastPatienceMs) return;
    for (int number = 0; number < m_plant.Count(); ++number)
        if (At(number).phase != EPhase::Healthy || m_power != EPower::On)
            Find(QStringLiteral("module %1 does not come to an end with \"%2\": it is \"%3\"")
                     .arg(number)
                     .arg(RowOf(number).fault, m_operator->Status(number)));
    Finish();
}

/// One at most; the operator looks at it sooner or later.
void Soak::LookAtWarnings() {
    const int open = OperatorHands::CountWarnings();
    if (open > 1) Find(QStringLiteral("%1 warnings are open").arg(open));
    if (open > 0 && Roll(1, 100) == 1) m_warnings += OperatorHands::CloseWarnings();
}

void Soak::WorkThePlant() {
    if (Now() >= m_nextCount) {
        m_nextCount = Now() + CountEveryMs;
        m_plant.AskForCounts();
    }
    for (int number = 0; number < m_plant.Count(); ++number) {
        if (Now() < At(number).nextKey) continue;
        At(number).nextKey = Now() + Roll(20, 400);
        m_plant.SetStates(number, words::Draw(m_random));
        ++m_keyings;
    }
}

void Soak::Step(int number) {
    switch (At(number).phase) {
        case EPhase::Healthy:
            return StepHealthy(number);
        case EPhase::Faulty:
            return StepFaulty(number);
        case EPhase::Neglected:
            return StepNeglected(number);
        case EPhase::Mending:
            return StepMending(number);
        case EPhase::Recovering:
            return StepRecovering(number);
    }
}

void Soak::StepHealthy(int number) {
    if (Now() >= At(number).until && m_power == EPower::On && !IsOver()) BeginFault(number);
}

void Soak::BeginFault(int number) {
    At(number).fault = DrawFault();
    const FaultRow& row = RowOf(number);
    const bool hasNumber = row.fault == QLatin1String("exception");
    m_plant.SetFault(number, hasNumber ? QStringLiteral("exception %1").arg(Roll(0, 15)) : row.fault);
    Enter(number, EPhase::Faulty, row.alarm == EAlarm::Always ? PatienceMs : Roll(300, 3000));
}

/// In random order, and each as often as the others.
int Soak::DrawFault() {
    if (m_deck.empty()) {
        m_deck.resize(static_cast<std::size_t>(m_matrix.CountFaults()));
        std::iota(m_deck.begin(), m_deck.end(), 0);
        std::shuffle(m_deck.begin(), m_deck.end(), m_random);
    }
    const int fault = m_deck.back();
    m_deck.pop_back();
    return fault;
}

void Soak::StepFaulty(int number) {
    const EAlarm alarm = RowOf(number).alarm;
    const bool isLost = m_operator->Status(number) == Error;
    const bool isOver = Now() >= At(number).until;
    if (isLost && alarm == EAlarm::Perhaps && !isOver) return At(number).hasFailed ? Connect(number) : void();
    if (isLost && alarm == EAlarm::Never)
        Find(QStringLiteral("module %1 is lost by \"%2\"").arg(number).arg(RowOf(number).fault));
    if (isOver && !isLost && alarm == EAlarm::Always)
        Find(QStringLiteral("module %1 is not lost by \"%2\"").arg(number).arg(RowOf(number).fault));
    if (isLost)
        Enter(number, EPhase::Neglected, Roll(0, 2 * m_settings.responseTimeout));
    else if (isOver)
        EndFault(number);
}

void Soak::StepNeglected(int number) {
    if (Now() >= At(number).until)
        EndFault(number);
    else if (Roll(1, 40) == 1)
        Meddle(number);
}

/// What an operator tries before the cause is found.
void Soak::Meddle(int number) {
    switch (Roll(0, 3)) {
        case 0:
            return m_operator->Edit(number, RollInterval());
        case 1:
            m_operator->Delete(number);
            m_operator->Add(number, RollInterval());
            return m_operator->AssignAll();
        case 2:
            return m_operator->Delete(number);
        default:
            return m_operator->ChooseConnection(number);
    }
}

void Soak::EndFault(int number) {
    m_plant.SetFault(number, QStringLiteral("none"));
    Enter(number, EPhase::Mending, PatienceMs);
}

void Soak::StepMending(int number) {
    if (!m_plant.HasFault(number) || Now() < At(number).nextAttempt) return;
    // A connection of before may have more of the fault in store: an answer that came twice.
    const bool isOld = RowOf(number).alarm != EAlarm::Never && m_operator->Status(number) == Connected;
    if (isOld) return m_operator->ChooseConnection(number);
    At(number).attempts = 0;
    Enter(number, EPhase::Recovering, PatienceMs);
    if (m_operator->Status(number) != Connected) Connect(number);
}

void Soak::StepRecovering(int number) {
    if (m_operator->Status(number) == Connected && m_witness->IsTrulyShown(number)) return OnRead(number);
    if (Now() >= At(number).until) {
        Find(QStringLiteral("module %1 is not read again after \"%2\"").arg(number).arg(RowOf(number).fault));
        Enter(number, EPhase::Recovering, PatienceMs);
    }
    if (At(number).hasFailed && m_operator->Status(number) == Error) Connect(number);
}

void Soak::OnRead(int number) {
    FaultRow& row = RowOf(number);
    row.longestMendingMs = std::max(row.longestMendingMs, Now() - At(number).since);
    row.mendedAtOnce += At(number).attempts <= 1 ? 1 : 0;
    ++row.episodes;
    Enter(number, EPhase::Healthy, Roll(100, 1500));
}

/// By the menu, or as a new module if there is none any more.
void Soak::Connect(int number) {
    if (Now() < At(number).nextAttempt) return;
    At(number).nextAttempt = Now() + AttemptEveryMs;
    At(number).hasFailed = false;
    ++At(number).attempts;
    if (!m_operator->Status(number).isEmpty()) return m_operator->ChooseConnection(number);
    m_operator->Add(number, RollInterval());
    m_operator->AssignAll();
}

/// A power cut waits until all modules are healthy, and the return of the power until none is connected: what
/// they read before their transmitters are known to this program would be called false.
void Soak::StepPower() {
    if (m_power == EPower::On && Now() >= m_nextPowerCut && !IsOver()) m_power = EPower::Failing;
    if (m_power == EPower::Failing && AreAllHealthy()) {
        m_power = EPower::Off;
        for (int number = 0; number < m_plant.Count(); ++number)
            At(number).fault = m_matrix.PowerCut();
        m_plant.Kill();
    }
    const auto all = [this](const auto& holds) {
        for (int number = 0; number < m_plant.Count(); ++number)
            if (!holds(number)) return false;
        return true;
    };
    if (m_power == EPower::Off && all([this](int number) { return m_operator->Status(number) == Error; })) {
        m_power = EPower::Returning;
        m_plant.Restart();
    }
    if (m_power != EPower::Returning || !m_plant.IsListening()) return;
    if (!all(
            [this](int number) { return m_plant.HasStates(number) && words::IsOne(m_plant.States(number)); }))
        return;
    m_power = EPower::On;
    m_nextPowerCut = Now() + PowerCutEveryMs;
    for (int number = 0; number < m_plant.Count(); ++number)
        EndFault(number);
}

/// Mostly short. Some are so long that a module may drop the connection in between.
int Soak::RollInterval() {
    constexpr int Shortest = 10;
    constexpr int Longest = 1000;
    return Roll(1, 4) == 1 ? std::min(m_settings.responseTimeout / 2, Longest) : Shortest * Roll(1, 5);
}

void Soak::Enter(int number, EPhase phase, qint64 forMs) {
    At(number).phase = phase;
    At(number).since = Now();
    At(number).until = Now() + forMs;
}

void Soak::OnError(int number, const QString& text) {
    ++m_signalledErrors;
    ++RowOf(number).errors[text];
    At(number).hasFailed = true;
    if (At(number).phase == EPhase::Healthy && m_power != EPower::Off && m_power != EPower::Returning)
        Find(QStringLiteral("module %1 has no fault, and an error: %2").arg(number).arg(text));
}

bool Soak::AreAllHealthy() const {
    return std::all_of(m_modules.begin(), m_modules.end(),
                       [](const Module& module) { return module.phase == EPhase::Healthy; });
}

void Soak::Finish() {
    m_timer.stop();
    m_witness->CompareBlanking();
    if (m_witness->CountFalseStates() > 0)
        Find(QStringLiteral("%1 false states, among them:").arg(m_witness->CountFalseStates()));
    for (const QString& text : m_witness->FalseStates())
        Find(text);
    if (m_witness->ErrorsWritten() != m_signalledErrors)
        Find(QStringLiteral("%1 errors, but %2 written")
                 .arg(m_signalledErrors)
                 .arg(m_witness->ErrorsWritten()));
    if (m_operator->LongestMs() > m_settings.responseTimeout)
        Find(QStringLiteral("an action of the operator took %1 ms").arg(m_operator->LongestMs()));
    m_operator->Leave();
    m_warnings += OperatorHands::CloseWarnings();
    Q_EMIT Finished();
}

QString Soak::Report() const {
    return m_matrix.ToText() +
           QStringLiteral(
               "\n%1 s, %2 modules: %3 questions, %4 keyings, %5 readings published, %6 faults, %7 errors, "
               "%8 warnings; ")
               .arg(Now() / 1000)
               .arg(m_plant.Count())
               .arg(m_plant.Questions())
               .arg(m_keyings)
               .arg(m_witness->Readings())
               .arg(m_matrix.Episodes())
               .arg(m_signalledErrors)
               .arg(m_warnings) +
           QStringLiteral("%1 actions of the operator, the longest took %2 ms\n")
               .arg(m_operator->Actions())
               .arg(m_operator->LongestMs(), 0, 'f', 1);
}

void Soak::Find(const QString& finding) {
    constexpr int MaxKept = 50;
    if (m_findings.size() < MaxKept) m_findings += finding;
}

}  // namespace soak
