// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/overview/overviewpage.h>

#include <apps/mcconsole/overview/answerline.h>
#include <apps/mcconsole/overview/frequencyline.h>
#include <apps/mcconsole/overview/frequencyusers.h>
#include <apps/mcconsole/overview/lastevents.h>
#include <apps/mcconsole/overview/marks.h>
#include <apps/mcconsole/overview/restoreoffer.h>
#include <apps/mcconsole/overview/trendplot.h>
#include <apps/mcconsole/session/judgement.h>
#include <apps/mcconsole/session/situation.h>
#include <apps/mcconsole/tune/tunebar.h>
#include <apps/mcconsole/tune/tuning.h>
#include <apps/pages/severitylook.h>

#include <QtCore/QEvent>
#include <QtCore/QSignalBlocker>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStyle>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QVBoxLayout>

namespace {

constexpr std::chrono::milliseconds MarksInterval(100);  // keys and clients may change faster than is seen
constexpr double LargeFont = 2.2;                        // times the usual one

QHBoxLayout* RowIn(QWidget* box) {
    auto* const layout = new QHBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    return layout;
}

QLabel* Heading(const QString& text, QWidget* parent) {
    auto* const label = new QLabel(text, parent);
    label->setMinimumWidth(1);
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    return label;
}

}  // namespace

OverviewPage::OverviewPage(IClock& clock, Tuning& tuning, FrequencyBook& book, const Situation& situation,
                           QWidget* parent)
    : Page(parent),
      m_clock(clock),
      m_tuning(tuning),
      m_situation(situation),
      m_retry(clock, tuning, situation),
      m_held(clock, tuning, situation),
      m_users(new FrequencyUsers(this)),
      m_tuneBar(new TuneBar(tuning, book, this)),
      m_line(new FrequencyLine(this)),
      m_marksTimer(clock),
      m_own(*this, [this] { ShowOwn(); }),
      m_marks(*this, [this] { ShowMarks(); }) {
    auto* const layout = new QVBoxLayout(this);
    layout->setSpacing(4);
    layout->addWidget(BuildHead());
    layout->addWidget(m_tuneBar);
    layout->addWidget(BuildAnswer());
    layout->addWidget(BuildLineHead());
    layout->addWidget(m_line, 3);
    layout->addWidget(BuildBelow(), 2);

    connect(&situation, &Situation::Changed, &m_own, &WhenSeen::Refresh);
    connect(&situation, &Situation::Looked, this, &OverviewPage::ShowMarksSoon);
    // At once, since that second's look has just been had: a quiet console wakes once for both.
    connect(&situation, &Situation::Ticked, this, [this] {
        m_marksTimer.Stop();
        m_marks.Refresh();
    });
    connect(&tuning, &Tuning::Changed, this, &OverviewPage::ShowMarksSoon);
    connect(m_users, &FrequencyUsers::Changed, this, &OverviewPage::ShowMarksSoon);
    connect(&m_retry, &SilentRetry::Changed, this, &OverviewPage::ShowRetry);
    connect(&m_retry, &SilentRetry::GivenUp, this, &OverviewPage::TellGivenUp);
    connect(m_line, &FrequencyLine::Chosen, this, [this](double hz) {
        m_tuning.Enter(Tuning::Shown(hz));
        m_tuneBar->TakeFocus();
    });
    ShowOwn();
    ShowRetry();
    m_marks.Refresh();
}

OverviewPage::~OverviewPage() = default;

void OverviewPage::TellGivenUp(double hz, SilentRetry::EReason why) {
    const QString text =
        why == SilentRetry::EReason::NoMpxOrv
            ? tr("%1: Nobody waits any more until %2 is silent, since there is no MpxORV to tune any more.")
            : tr("%1: Nobody waits any more until %2 is silent, since the server has ceased to say so.");
    const QString time = m_clock.TimeOfDay().toString(QStringLiteral("HH:mm:ss"));
    Q_EMIT Noticed(text.arg(time, judgement::Frequency(hz)));
}

QWidget* OverviewPage::BuildHead() {
    auto* const box = new QWidget(this);
    m_icon = new QLabel(box);
    m_frequency = new QLabel(box);
    m_frequency->setObjectName(QStringLiteral("OwnFrequency"));
    m_frequency->setTextFormat(Qt::PlainText);
    QFont font = m_frequency->font();
    font.setPointSizeF(font.pointSizeF() * LargeFont);
    font.setBold(true);
    m_frequency->setFont(font);
    QHBoxLayout* const layout = RowIn(box);
    layout->addWidget(m_icon);
    layout->addWidget(m_frequency);
    layout->addStretch(1);
    auto* const offer = new RestoreOffer(m_held, box);
    offer->setObjectName(QStringLiteral("RestoreOffer"));
    layout->addWidget(offer);
    return box;
}

QWidget* OverviewPage::BuildAnswer() {
    auto* const box = new QWidget(this);
    m_answer = new AnswerLine(m_clock, box);
    m_retryButton = new QPushButton(box);
    m_retryButton->setObjectName(QStringLiteral("RetryWhenSilent"));
    m_retryButton->setCheckable(true);
    m_retryButton->setToolTip(
        tr("Asks for the wanted frequency once more, one time, as soon as no transmitter on it is keyed."));
    connect(m_retryButton, &QPushButton::toggled, this, &OverviewPage::ToggleRetry);
    QHBoxLayout* const layout = RowIn(box);
    layout->addWidget(m_answer, 1);
    layout->addWidget(m_retryButton);
    return box;
}

QWidget* OverviewPage::BuildLineHead() {
    auto* const box = new QWidget(this);
    auto* const all = new QToolButton(box);
    all->setObjectName(QStringLiteral("ShowAllFrequencies"));
    all->setText(tr("Show &all"));
    all->setAccessibleName(tr("Show all frequencies"));
    all->setFocusPolicy(Qt::StrongFocus);
    connect(all, &QToolButton::clicked, m_line, &FrequencyLine::ShowAll);
    QHBoxLayout* const layout = RowIn(box);
    m_line->setToolTip(tr("A click puts a frequency into the field, the wheel zooms, dragging moves."));
    layout->addWidget(Heading(tr("Frequencies in use (MHz)"), box), 1);
    layout->addWidget(all);
    return box;
}

QWidget* OverviewPage::BuildBelow() {
    auto* const box = new QWidget(this);
    m_events = new LastEvents(box);
    auto* const grid = new QGridLayout(box);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setVerticalSpacing(2);
    grid->addWidget(Heading(tr("Sweep time, round trip (dotted, right), in ms"), box), 0, 0);
    grid->addWidget(Heading(tr("Last events"), box), 0, 1);
    grid->addWidget(new TrendPlot(m_situation, box), 1, 0);
    grid->addWidget(m_events, 1, 1);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(1, 1);
    return box;
}

void OverviewPage::Bind(const QString& basePath, EMCSControlTreeSegments segments) {
    m_users->Bind(basePath, segments);
}

void OverviewPage::BindMpxOrv(const QString& path) {
    m_answer->Bind(path);
}

void OverviewPage::ShowOwn() {
    const SituationItem& own = m_situation.Get(Situation::EItem::Own);
    const std::optional<double> hz = m_situation.GetFacts().TunedFrequency();
    const QString text = hz ? Tuning::Shown(*hz) : own.word;
    if (m_shownOwn == own && m_frequency->text() == text) return;
    const bool hasIcon = m_shownOwn && m_shownOwn->severity == own.severity;
    m_shownOwn = own;
    m_frequency->setText(text);
    m_frequency->setToolTip(own.detail);
    m_frequency->setAccessibleName(own.word);
    QPalette colours = palette();
    colours.setColor(QPalette::WindowText, severitylook::Colour(own.severity, palette()));
    m_frequency->setPalette(colours);
    if (hasIcon) return;  // it is read from a file of the style each time
    const int size = style()->pixelMetric(QStyle::PM_LargeIconSize, nullptr, this);
    m_icon->setPixmap(severitylook::Icon(own.severity, *style()).pixmap(size));
}

void OverviewPage::ShowRetry() {
    const bool isWaiting = m_retry.GetState() == SilentRetry::EState::Waiting;
    m_retryButton->setEnabled(m_retry.GetState() != SilentRetry::EState::Idle);
    {
        const QSignalBlocker blocker(m_retryButton);
        m_retryButton->setChecked(isWaiting);
    }
    m_retryButton->setText(
        isWaiting ? tr("Waits until %1 is silent: cancel").arg(judgement::Frequency(m_retry.GetFrequency()))
                  : tr("&Retry when silent"));
}

void OverviewPage::ToggleRetry() {
    if (m_retry.GetState() == SilentRetry::EState::Waiting)
        m_retry.Cancel();
    else
        m_retry.Wait();
    ShowRetry();
}

void OverviewPage::ShowMarksSoon() {
    if (!m_marks.IsSeen()) return m_marks.Refresh();
    if (!m_marksTimer.IsRunning()) m_marksTimer.Start(MarksInterval, [this] { m_marks.Refresh(); });
}

void OverviewPage::ShowMarks() {
    m_line->ShowStale(m_situation.IsStale());
    m_line->ShowBands(marks::MakeBands(m_situation, m_tuning));
    m_line->ShowMarks(marks::Make(m_users->Find(), m_situation, m_tuning));
}

void OverviewPage::changeEvent(QEvent* event) {
    Page::changeEvent(event);
    if (event->type() != QEvent::PaletteChange && event->type() != QEvent::StyleChange) return;
    m_shownOwn.reset();
    ShowOwn();
}
