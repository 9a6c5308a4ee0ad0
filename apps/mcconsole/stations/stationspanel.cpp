// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/stations/stationspanel.h>

#include <apps/common/problemtext.h>

#include <platform/widgets/valuetext.h>

#include <QtCore/QSortFilterProxyModel>
#include <QtCore/QTimer>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStyleOptionGroupBox>
#include <QtWidgets/QStylePainter>
#include <QtWidgets/QTableView>
#include <QtWidgets/QVBoxLayout>

namespace {

constexpr std::chrono::milliseconds StationTick(1000);  // ages are told in seconds
constexpr int LongestPlace = 300;
constexpr int LongestStationFilter = 100;
constexpr int MaxStationProblem = 200;
constexpr int LeastStationRows = 4;
constexpr int BesideStations = 24;  // pixels: frame, and a bar to scroll by

constexpr int StationColumnWidths[] = {14, 12, 8, 12, 26, 10};  // characters

}  // namespace

StationsPanel::StationsPanel(StationFinder::MakeBus makeBus, OptionsFor optionsFor, QWidget* parent)
    : QGroupBox(tr("Stations at &NATS"), parent),
      m_optionsFor(std::move(optionsFor)),
      m_finder(std::move(makeBus)),
      m_model(new StationModel(m_clock, this)),
      m_shown(new QSortFilterProxyModel(this)),
      m_content(new QWidget(this)),
      m_tick(new QTimer(this)) {
    setObjectName(QStringLiteral("Stations"));
    setCheckable(true);
    setChecked(false);
    m_state = new QLabel(m_content);
    m_state->setObjectName(QStringLiteral("StationsState"));
    m_state->setTextFormat(Qt::PlainText);
    m_state->setWordWrap(true);
    m_state->setMinimumWidth(1);            // long words in it do not make the window wider
    QWidget* const places = BuildPlaces();  // Tab comes to it before the table
    BuildTable();
    auto* const rows = new QVBoxLayout(m_content);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->addWidget(places);
    rows->addWidget(m_table, 1);
    rows->addWidget(m_state);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(m_content);
    connect(this, &QGroupBox::toggled, this, &StationsPanel::Open);
    connect(&m_finder, &StationFinder::Changed, this, &StationsPanel::ShowState);
    connect(&m_finder, &StationFinder::Heard, this, [this](const nats::StationInfo& station) {
        m_model->Add(station);
        ShowState();
    });
    connect(m_tick, &QTimer::timeout, this, [this] {
        m_model->Tick();
        ShowState();
    });
    Open(false);
}

StationsPanel::~StationsPanel() = default;

QWidget* StationsPanel::BuildPlaces() {
    auto* const line = new QWidget(m_content);
    m_address = new QComboBox(line);
    m_address->setObjectName(QStringLiteral("NatsAddress"));
    m_address->setAccessibleName(tr("Where NATS is"));
    m_address->setToolTip(tr("HOST or HOST:PORT, several with commas between; natss:// in front means TLS."));
    m_address->setEditable(true);
    m_address->setInsertPolicy(QComboBox::NoInsert);
    m_address->lineEdit()->setMaxLength(LongestPlace);
    m_address->lineEdit()->setPlaceholderText(tr("host of NATS"));
    m_address->installEventFilter(this);  // what its field is given goes through it
    m_look = new QPushButton(tr("&List"), line);
    m_look->setObjectName(QStringLiteral("ListStations"));
    m_look->setAccessibleName(tr("List the stations"));
    m_look->setAutoDefault(false);
    m_filter = new QLineEdit(line);
    m_filter->setObjectName(QStringLiteral("StationFilter"));
    m_filter->setAccessibleName(tr("Filter of the list of stations"));
    m_filter->setPlaceholderText(tr("Filter"));
    m_filter->setClearButtonEnabled(true);
    m_filter->setMaxLength(LongestStationFilter);
    m_filter->installEventFilter(this);
    connect(m_look, &QPushButton::clicked, this, &StationsPanel::Look);
    connect(m_address, qOverload<int>(&QComboBox::activated), this, &StationsPanel::Look);
    connect(m_filter, &QLineEdit::textChanged, m_shown, &QSortFilterProxyModel::setFilterFixedString);
    connect(m_filter, &QLineEdit::textChanged, this, &StationsPanel::ShowState);
    auto* const layout = new QHBoxLayout(line);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_address, 2);
    layout->addWidget(m_look);
    layout->addWidget(m_filter, 1);
    return line;
}

void StationsPanel::BuildTable() {
    m_shown->setSourceModel(m_model);
    m_shown->setSortRole(StationModel::SortRole);
    m_shown->setFilterKeyColumn(-1);
    m_shown->setFilterCaseSensitivity(Qt::CaseInsensitive);
    m_shown->setDynamicSortFilter(true);
    m_table = new QTableView(m_content);
    m_table->setObjectName(QStringLiteral("StationTable"));
    m_table->setAccessibleName(tr("Stations at NATS"));
    m_table->setModel(m_shown);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setTabKeyNavigation(false);  // Tab leads on
    m_table->setWordWrap(false);
    m_table->setSortingEnabled(true);
    m_table->sortByColumn(StationModel::Station, Qt::AscendingOrder);
    m_table->verticalHeader()->hide();
    m_table->horizontalHeader()->setHighlightSections(false);  // bold titles would be cut
    // What a device does takes the most words.
    m_table->horizontalHeader()->setStretchLastSection(false);
    m_table->horizontalHeader()->setSectionResizeMode(StationModel::Device, QHeaderView::Stretch);
    const int character = m_table->fontMetrics().averageCharWidth();
    int width = BesideStations;
    for (int column = 0; column < StationModel::ColumnCount; ++column) {
        m_table->setColumnWidth(column, StationColumnWidths[column] * character);
        width += m_table->columnWidth(column);
    }
    m_table->setMinimumWidth(width);
    const int line = m_table->fontMetrics().height() + m_table->fontMetrics().leading() + 4;
    m_table->verticalHeader()->setDefaultSectionSize(line);
    m_table->setMinimumHeight((LeastStationRows + 2) * line);
    m_table->installEventFilter(this);
    connect(m_table->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &StationsPanel::ChooseCurrent);
    connect(m_table, &QTableView::doubleClicked, this, &StationsPanel::ActivateCurrent);
}

void StationsPanel::OfferPlaces(const QStringList& places) {
    m_address->addItems(places);
    if (places.isEmpty()) return;
    m_address->setCurrentIndex(0);
    setChecked(true);
}

void StationsPanel::Open(bool isOpen) {
    m_content->setVisible(isOpen);
    setSizePolicy(QSizePolicy::Preferred, isOpen ? QSizePolicy::Expanding : QSizePolicy::Maximum);
    if (isOpen && !m_address->currentText().trimmed().isEmpty()) return Look();
    if (!isOpen) {
        m_tick->stop();
        m_finder.Stop();
        m_model->Clear();
    }
    ShowState();
    if (!isOpen) return;
    // Nothing else is to be done; later, since the key of the box gives the focus to that.
    QTimer::singleShot(0, m_address, [this] { m_address->setFocus(); });
}

/// A frame around nothing would look as if something was missing.
void StationsPanel::paintEvent(QPaintEvent* event) {
    if (isChecked()) return QGroupBox::paintEvent(event);
    QStyleOptionGroupBox option;
    initStyleOption(&option);
    option.subControls &= ~QStyle::SC_GroupBoxFrame;
    QStylePainter(this).drawComplexControl(QStyle::CC_GroupBox, option);
}

void StationsPanel::Look() {
    m_model->Clear();
    NatsPlace place;
    if (!place.Parse(m_address->currentText())) {
        m_place = NatsPlace();
        m_finder.Stop();
        return ShowState();
    }
    m_place = place;
    m_tick->start(StationTick);
    nats::NatsOptions options = m_optionsFor(place);
    options.servers = place.servers;
    m_finder.Look(options);
}

void StationsPanel::ShowState() {
    const QString text = StateText();
    if (m_state->text() != text) m_state->setText(text);
    m_table->setAccessibleDescription(text);
    if (m_finder.GetState() == StationFinder::EState::Open) Q_EMIT Reached(m_place.ToText());
}

QString StationsPanel::StateText() const {
    const QString place = valuetext::Shortened(m_place.ToText(), MaxStationProblem);
    const QString problem =
        valuetext::Shortened(problemtext::Translated(m_finder.GetProblem()), MaxStationProblem);
    switch (m_finder.GetState()) {
        case StationFinder::EState::Idle: {
            const QString entered = m_address->currentText().trimmed();
            return entered.isEmpty() || m_place.ToText() == entered
                       ? tr("Say where NATS is, and who is there is listed.")
                       : tr("\"%1\" cannot be where NATS is: write HOST or HOST:PORT.")
                             .arg(valuetext::Shortened(entered, MaxStationProblem));
        }
        case StationFinder::EState::Impossible:
            return problem;
        case StationFinder::EState::Connecting:
            return problem.isEmpty() ? tr("Connecting to NATS at %1").arg(place)
                                     : tr("NATS is not reached, trying again: %1").arg(problem);
        case StationFinder::EState::Open:
            break;
    }
    if (!problem.isEmpty()) return problem;
    const int count = m_model->rowCount();
    if (count == 0) return tr("Nobody offers a station at %1 yet.").arg(place);
    const int shown = m_shown->rowCount();
    if (shown != count) return tr("%1 of %n stations", nullptr, count).arg(shown);
    return count == 1 ? tr("One station") : tr("%n stations", nullptr, count);
}

ServerAddress StationsPanel::CurrentAddress() const {
    const QModelIndex current = m_table->currentIndex();
    if (!current.isValid()) return ServerAddress();
    return m_place.AddressOf(current.data(StationModel::StationRole).toString());
}

void StationsPanel::ChooseCurrent() {
    const ServerAddress address = CurrentAddress();
    if (!address.host.isEmpty()) Q_EMIT Chosen(address);
}

void StationsPanel::ActivateCurrent() {
    const ServerAddress address = CurrentAddress();
    if (!address.host.isEmpty()) Q_EMIT Activated(address);
}

void StationsPanel::GoToTable() {
    if (m_shown->rowCount() == 0) return;
    m_table->setFocus();
    if (!m_table->currentIndex().isValid()) m_table->setCurrentIndex(m_shown->index(0, 0));
}

/// Enter means what is in hand, not the dialog's button.
bool StationsPanel::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return QGroupBox::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    const bool isEnter = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (watched == m_table && isEnter) {
        ActivateCurrent();
        return true;
    }
    if (watched == m_filter && (isEnter || key == Qt::Key_Down)) {
        GoToTable();
        return true;
    }
    if (watched == m_address && isEnter) {
        Look();
        return true;
    }
    return QGroupBox::eventFilter(watched, event);
}
