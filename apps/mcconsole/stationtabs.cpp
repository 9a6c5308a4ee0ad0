// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/stationtabs.h>

#include <apps/mcconsole/stationview.h>
#include <apps/pages/severitylook.h>

#include <platform/widgets/valuetext.h>

#include <QtCore/QEvent>
#include <QtCore/QSignalBlocker>
#include <QtGui/QTextDocument>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QStyle>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>

namespace {

constexpr int MaxTabAddress = 40;  // that tells stations of one name apart
constexpr int MaxTabCause = 400;

/// What is a mark of a key to the bar is a character to whoever chose the name.
QString TabText(QString text) {
    return text.replace(QLatin1Char('&'), QLatin1String("&&"));
}

}  // namespace

StationTabs::StationTabs(QWidget* parent)
    : QWidget(parent), m_bar(new QTabBar(this)), m_stack(new QStackedWidget(this)) {
    m_bar->setObjectName(QStringLiteral("StationTabs"));
    m_bar->setAccessibleName(tr("Stations"));
    m_bar->setDocumentMode(true);
    m_bar->setDrawBase(true);
    m_bar->setExpanding(false);
    m_bar->setElideMode(Qt::ElideRight);
    m_bar->setUsesScrollButtons(false);
    m_bar->installEventFilter(this);
    m_bar->hide();
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_bar);
    layout->addWidget(m_stack, 1);
    connect(m_bar, &QTabBar::currentChanged, this, &StationTabs::OnFrontChanged);
}

StationTabs::~StationTabs() {
    for (StationView* const station : m_stations)
        disconnect(station, nullptr, this, nullptr);
    delete m_stack;  // what stations tell at their end is told to nobody
}

void StationTabs::Insert(int index, StationView* station) {
    m_stations.insert(m_stations.begin() + index, station);
    m_words.insert(m_words.begin() + index, StationWord::Of(station->GetSituation()));
    m_losses.insert(m_losses.begin() + index, UnseenLoss());
    m_stack->addWidget(station);
    connect(station, &StationView::Changed, this, [this, station] {
        ShowChanged(*station);
        Q_EMIT Changed(station);
    });
    {
        const QSignalBlocker blocker(m_bar);
        AddCloseButton(station, m_bar->insertTab(index, QString()));
    }
    m_bar->setVisible(m_stations.size() > 1);
    ShowAll();
    BringToFront(*station);
}

void StationTabs::AddCloseButton(StationView* station, int index) {
    auto* const button = new QToolButton(m_bar);
    button->setObjectName(QStringLiteral("CloseStation"));
    button->setAutoRaise(true);
    button->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton, nullptr, button));
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, button) * 3 / 4;
    button->setIconSize(QSize(size, size));
    button->setFocusPolicy(Qt::NoFocus);  // there is a key for it
    button->setToolTip(tr("Close this station"));
    button->setAccessibleName(tr("Close this station"));
    connect(button, &QToolButton::clicked, station, [this, station] { Q_EMIT CloseRequested(station); });
    m_bar->setTabButton(index, QTabBar::RightSide, button);
}

void StationTabs::Remove(StationView& station) {
    const int index = IndexOf(station);
    Q_ASSERT(m_stations.size() > 1 && index >= 0);
    disconnect(&station, nullptr, this, nullptr);
    m_stations.erase(m_stations.begin() + index);
    m_words.erase(m_words.begin() + index);
    m_losses.erase(m_losses.begin() + index);
    {
        const QSignalBlocker blocker(m_bar);
        m_bar->removeTab(index);
    }
    m_stack->removeWidget(&station);
    station.hide();
    station.deleteLater();  // the key that closes it may have been pressed in it
    m_bar->setVisible(m_stations.size() > 1);
    ShowAll();
    OnFrontChanged(m_bar->currentIndex());
}

int StationTabs::IndexOf(const StationView& station) const {
    const auto found = std::find(m_stations.begin(), m_stations.end(), &station);
    return found == m_stations.end() ? -1 : static_cast<int>(found - m_stations.begin());
}

int StationTabs::FrontIndex() const {
    return std::max(m_bar->currentIndex(), 0);
}

void StationTabs::BringToFront(StationView& station) {
    const int index = IndexOf(station);
    if (m_bar->currentIndex() == index)
        OnFrontChanged(index);
    else
        m_bar->setCurrentIndex(index);
}

void StationTabs::Step(int by) {
    const int count = static_cast<int>(m_stations.size());
    m_bar->setCurrentIndex((FrontIndex() + by + count) % count);
}

void StationTabs::OnFrontChanged(int index) {
    if (index < 0 || index >= static_cast<int>(m_stations.size())) return;
    m_stack->setCurrentWidget(m_stations[static_cast<std::size_t>(index)]);
    for (const StationView* const station : m_stations)
        ShowChanged(*station);  // what was lost here is seen now, and what is held there is left alone
    Q_EMIT FrontChanged();
}

StationWord StationTabs::WordOf(int index) {
    const auto at = static_cast<std::size_t>(index);
    const Situation& situation = m_stations[at]->GetSituation();
    StationWord word = StationWord::Of(situation);
    m_losses[at].Look(situation, index == FrontIndex());
    const QString lost = m_losses[at].GetText();
    if (lost.isEmpty() || situation.GetConnection().state != ConsoleSession::EState::Connected) return word;
    word.cause = lost + QLatin1Char('\n') + word.cause;
    word.word = lost;
    word.severity = ESeverity::Act;
    return word;
}

StationWord StationTabs::GetWord(int index) const {
    StationWord word = m_words[static_cast<std::size_t>(index)];
    word.name = LabelOf(index);
    return word;
}

void StationTabs::ShowChanged(const StationView& station) {
    const int index = IndexOf(station);
    StationWord& shown = m_words[static_cast<std::size_t>(index)];
    const StationWord word = WordOf(index);
    if (word == shown) return;
    const bool isRenamed = word.name != shown.name;
    shown = word;
    if (isRenamed) return ShowAll();  // what tells two of one name apart depends on both
    ShowTab(index);
}

void StationTabs::ShowAll() {
    for (int i = 0; i < m_bar->count(); ++i)
        ShowTab(i);
}

QString StationTabs::LabelOf(int index) const {
    const auto at = static_cast<std::size_t>(index);
    const QString& name = m_words[at].name;
    const auto named = std::count_if(m_words.begin(), m_words.end(),
                                     [&](const StationWord& word) { return word.name == name; });
    const ServerAddress& server = m_stations[at]->GetSituation().GetConnection().server;
    if (named < 2 || server.host.isEmpty()) return name;
    const QString address = server.isOverNats ? server.host : server.ToText();
    return QStringLiteral("%1 (%2)").arg(name, valuetext::Shortened(address, MaxTabAddress));
}

void StationTabs::ShowTab(int index) {
    const StationWord word = GetWord(index);
    StationView& station = *m_stations[static_cast<std::size_t>(index)];
    station.SetPlace(m_stations.size() > 1 ? word.name : QString());
    const QString text = QStringLiteral("%1: %2").arg(word.name, word.word);
    m_bar->setTabText(index, TabText(text));
    m_bar->setTabIcon(index, severitylook::Icon(word.severity, *m_bar->style()));
    m_bar->setTabTextColor(index, severitylook::Colour(word.severity, palette()));
    m_bar->setAccessibleTabName(index,
                                QStringLiteral("%1 (%2)").arg(text, severitylook::Word(word.severity)));
    // As text, whatever others chose for a name.
    const QString tip = text + QLatin1Char('\n') + valuetext::Shortened(word.cause, MaxTabCause);
    m_bar->setTabToolTip(index, Qt::convertFromPlainText(tip, Qt::WhiteSpaceNormal));
}

/// By the wheel nobody means to act at another station from now on.
bool StationTabs::eventFilter(QObject* watched, QEvent* event) {
    return (watched == m_bar && event->type() == QEvent::Wheel) || QWidget::eventFilter(watched, event);
}

void StationTabs::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() != QEvent::PaletteChange && event->type() != QEvent::StyleChange) return;
    ShowAll();
}
