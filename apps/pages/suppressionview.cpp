// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/suppressionview.h>

#include <apps/common/frequencytext.h>
#include <apps/pages/serverkeys.h>
#include <apps/pages/severitylook.h>
#include <apps/pages/statetable.h>
#include <apps/pages/suppression/ignoringmodel.h>
#include <apps/pages/suppression/inputstatusmodel.h>
#include <apps/pages/suppression/keyingtimeline.h>
#include <apps/pages/suppression/modulestatusmodel.h>
#include <apps/pages/suppression/suppressionfollower.h>
#include <apps/pages/suppressionkeys.h>

#include <platform/values/tree.h>
#include <platform/widgets/vcpushbutton.h>

#include <QtCore/QSortFilterProxyModel>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QTableView>
#include <QtWidgets/QVBoxLayout>

#include <chrono>

namespace {

constexpr int LampSize = 16;
constexpr std::size_t MostFrequencies = 8;  // a line is to be read, not scrolled
constexpr std::chrono::seconds TickInterval(1);

/// Inputs with a frequency only, or all.
class AssignedInputs : public QSortFilterProxyModel {
  public:
    explicit AssignedInputs(QObject* parent) : QSortFilterProxyModel(parent) {
        setSortRole(InputStatusModel::SortRole);
        setSortLocaleAware(true);
    }
    void ShowAll(bool isAll) {
        m_showsAll = isAll;
        invalidateFilter();
    }

  protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override {
        const QModelIndex frequency = sourceModel()->index(row, InputStatusModel::Frequency, parent);
        return m_showsAll || frequency.data(InputStatusModel::SortRole).toDouble() > 0.0;
    }

  private:
    bool m_showsAll = false;
};

QString ShownFrequencies(const std::vector<double>& hz) {
    QStringList texts;
    for (std::size_t i = 0; i < hz.size() && i < MostFrequencies; ++i)
        texts << QStringLiteral("%1 MHz").arg(FrequencyText::InMegahertz(hz[i]));
    if (hz.size() > MostFrequencies) texts << QStringLiteral("\u2026");
    return texts.join(QStringLiteral(", "));
}

}  // namespace

SuppressionView::SuppressionView(QWidget* parent)
    : Page(parent),
      m_follower(new SuppressionFollower(this)),
      m_modules(new ModuleStatusModel(this)),
      m_inputs(new InputStatusModel(this)),
      m_shownInputs(new AssignedInputs(this)),
      m_ignoring(new IgnoringModel(this)),
      m_tabs(new QTabWidget(this)),
      m_timeline(new KeyingTimeline(m_follower->GetHistory(), this)),
      m_shown(*this, [this] { Show(); }),
      m_ticked(*this, [this] { Tick(); }) {
    QTableView* const modules = statetable::New(*this, "SuppressionModules", tr("Modules"));
    modules->setModel(m_modules);
    modules->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    modules->horizontalHeader()->setSectionResizeMode(ModuleStatusModel::Reason, QHeaderView::Stretch);
    QTableView* const ignoring =
        statetable::New(*this, "SuppressionIgnoring", tr("Who ignores the suppression"));
    ignoring->setModel(m_ignoring);
    ignoring->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    m_tabs->setObjectName(QStringLiteral("SuppressionTabs"));
    m_tabs->setDocumentMode(true);
    m_tabs->addTab(BuildInputs(), tr("Inputs"));
    m_tabs->addTab(m_timeline, tr("Timeline"));
    m_tabs->addTab(ignoring, QString());
    auto* const splitter = new QSplitter(Qt::Vertical, this);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(modules);
    splitter->addWidget(m_tabs);
    splitter->setStretchFactor(0, 1);
    splitter->setStretchFactor(1, 3);
    constexpr int height = statetable::RowHeight * (statetable::LeastRows + 2);
    splitter->setSizes({height, 3 * height});
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(BuildHead());
    layout->addWidget(splitter, 1);
    connect(m_follower, &SuppressionFollower::Changed, this, &SuppressionView::Follow);
    connect(&m_tick, &QTimer::timeout, &m_ticked, &WhenSeen::Refresh);
    m_tick.start(TickInterval);
    Show();
}

SuppressionView::~SuppressionView() = default;

QWidget* SuppressionView::BuildHead() {
    auto* const head = new QWidget(this);
    auto* const layout = new QHBoxLayout(head);
    layout->setContentsMargins(0, 0, 0, 0);
    m_icon = new QLabel(head);
    m_summary = new QLabel(head);
    m_summary->setObjectName(QStringLiteral("SuppressionSummary"));
    m_summary->setTextFormat(Qt::PlainText);
    m_summary->setMinimumWidth(1);  // long lines in it do not make the window wider
    m_summary->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_reconnect = new VCPushButton(head, "SuppressionReconnect");
    m_reconnect->setText(tr("Reconnect"));  // the alarm above has the key
    m_reconnect->setAccessibleName(tr("Reconnect"));
    m_reconnect->setToolTip(tr("Connects the modules in error anew"));
    layout->addWidget(m_icon);
    layout->addWidget(m_summary, 1);
    layout->addWidget(m_reconnect);
    return head;
}

QWidget* SuppressionView::BuildInputs() {
    auto* const page = new QWidget(this);
    QTableView* const table = statetable::New(*this, "SuppressionInputs", tr("Inputs"));
    m_shownInputs->setSourceModel(m_inputs);
    m_shownInputs->setDynamicSortFilter(true);
    table->setModel(m_shownInputs);
    table->setSortingEnabled(true);
    m_shownInputs->sort(-1);  // as the modules have them, until somebody wants it otherwise
    table->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    // As wide as what is seen of them; names take the rest.
    table->horizontalHeader()->setResizeContentsPrecision(0);
    table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    table->horizontalHeader()->setSectionResizeMode(InputStatusModel::Input, QHeaderView::Stretch);
    auto* const all = new QCheckBox(tr("Show inputs without a frequency too"), page);
    all->setObjectName(QStringLiteral("AllInputs"));
    connect(all, &QCheckBox::toggled, this,
            [this](bool isAll) { static_cast<AssignedInputs*>(m_shownInputs)->ShowAll(isAll); });
    auto* const layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(table, 1);
    layout->addWidget(all);
    return page;
}

void SuppressionView::Bind(const QString& basePath, EMCSControlTreeSegments segments) {
    m_staticPath = SegmentPath(basePath, segments, StaticMpxORVsSegment);
    m_dynamicPath = SegmentPath(basePath, segments, DynamicMpxORVsSegment);
    const QString status = SegmentPath(basePath, segments, StatusSegment);
    const QString commands = SegmentPath(basePath, segments, CommandSegment);
    m_follower->Follow(Below(status, suppressionkeys::Suppression));
    m_reconnectPath = Below(commands, serverkeys::ReconnectModules);
    m_reconnect->Set_ValuePath(m_reconnectPath);
    m_ticked.Refresh();
}

/// Modules answer all the time.
void SuppressionView::Follow() {
    m_modules->LearnClock(m_follower->GetState());
    m_shown.Refresh();
}

void SuppressionView::Tick() {
    // A server without modules has no such command.
    m_reconnect->setVisible(!m_reconnectPath.isEmpty() &&
                            values::Tree::Instance()->FindItem(m_reconnectPath) != nullptr);
    m_modules->RefreshAges();
    m_ignoring->Look(m_staticPath, m_dynamicPath);
    const QString title = IgnoringTitle();
    constexpr int ignoringTab = 2;
    if (m_tabs->tabText(ignoringTab) != title) m_tabs->setTabText(ignoringTab, title);
}

/// Who may not read the MpxORVs does not know that nobody does.
QString SuppressionView::IgnoringTitle() const {
    const int count = m_ignoring->rowCount();
    if (m_ignoring->IsPartial())
        return count == 0 ? tr("Who ignores it is not known") : tr("Ignored by %1 or more").arg(count);
    return count == 0 ? tr("Nobody ignores it") : tr("Ignored by %1").arg(count);
}

void SuppressionView::Show() {
    m_modules->Show(m_follower->GetState());
    m_inputs->Show(m_follower->GetState());
    ShowLanes();
    ShowSummary();
    Tick();
}

void SuppressionView::ShowLanes() {
    std::vector<KeyingTimeline::Lane> lanes;
    for (const ModuleStatusView& module : m_follower->GetState().modules)
        for (std::size_t i = 0; i < module.inputs.size(); ++i) {
            const InputStatus& input = module.inputs[i];
            if (input.hz <= 0.0) continue;
            const QString name = QStringLiteral("%1, %2: %3 MHz")
                                     .arg(module.name, input.name, FrequencyText::InMegahertz(input.hz));
            lanes.push_back({{module.number, static_cast<int>(i)}, name});
        }
    m_timeline->ShowLanes(lanes);
    m_timeline->RefreshSoon();
}

void SuppressionView::ShowSummary() {
    const SuppressionState& state = m_follower->GetState();
    const auto count = static_cast<int>(state.modules.size());
    ESeverity severity = ESeverity::Ok;
    QStringList parts;
    if (!state.isThere) {
        severity = ESeverity::Unknown;
        parts << tr("The server tells nothing of its suppression.");
    } else if (count == 0) {
        severity = ESeverity::Unknown;
        parts << tr("There are no input modules.");
    } else {
        parts << (count > 1 ? tr("%1 of %2 modules are in use.").arg(state.CountAnswering()).arg(count)
                  : state.CountAnswering() == 1 ? tr("The input module is in use.")
                                                : tr("The input module is not in use."));
        if (state.CountAnswering() < count) severity = ESeverity::Look;
        if (!state.unsupervised.empty()) {
            severity = ESeverity::Act;
            parts.last() +=
                QLatin1Char(' ') + tr("Not supervised: %1.").arg(ShownFrequencies(state.unsupervised));
        }
        parts << (state.keyed.empty() ? tr("Nothing is blanked now.")
                                      : tr("Blanked now: %1.").arg(ShownFrequencies(state.keyed)));
        if (!state.isLive) {
            severity = ESeverity::Stale;
            parts.first().prepend(tr("What was known last:") + QLatin1Char(' '));
        }
    }
    const QString text = parts.join(QLatin1Char('\n'));
    if (m_summary->text() != text) {
        m_summary->setText(text);
        m_summary->setToolTip(text);
    }
    if (severity == m_iconSeverity) return;  // it is read from a file of the style each time
    m_iconSeverity = severity;
    m_icon->setPixmap(severitylook::Icon(severity, *style()).pixmap(LampSize, LampSize));
    m_icon->setToolTip(severitylook::Word(severity));
    m_icon->setAccessibleName(severitylook::Word(severity));
}
