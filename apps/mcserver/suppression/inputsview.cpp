// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/suppression/inputsview.h>

#include <apps/common/problemtext.h>
#include <apps/mcserver/suppression/inputcells.h>
#include <apps/mcserver/suppression/inputcsv.h>
#include <apps/mcserver/suppression/pastedcells.h>
#include <apps/pages/frequencylist.h>
#include <apps/pages/undobar.h>

#include <platform/config/textfile.h>
#include <platform/widgets/plaintextdelegate.h>

#include <QtCore/QPointer>
#include <QtCore/QSaveFile>
#include <QtCore/QTime>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableView>

#include <utility>

namespace {

constexpr int RowHeight = 22;
constexpr int LeastRows = 2;  // where bars take the room on a small screen

/// Of columns, in characters, but not less than their titles need; names of inputs have what is left.
constexpr std::pair<int, int> Widths[] = {
    {InputModel::Address, 15}, {InputModel::Input, 8}, {InputModel::Frequency, 16}};
constexpr int LeastModule = 18;
constexpr int MostModule = 30;
constexpr int BesideText = 12;  // pixels, at both sides of a cell together

int WidthOfStates(const QFontMetrics& letters) {
    int width = 0;
    for (const QString& text : inputcells::StateTexts())
        width = qMax(width, letters.horizontalAdvance(text));
    return width + BesideText;
}

QString TimeOfDay() {
    return QTime::currentTime().toString(QStringLiteral("HH:mm:ss"));
}

QString FileFilter() {
    return QStringLiteral("CSV (*.csv)");
}

}  // namespace

InputsView::InputsView(SuppressionPlant& plant, const FrequencyRange& range, QWidget* parent)
    : QWidget(parent), m_model(plant, range), m_notice(new NoticeBar(this)), m_table(new QTableView(this)) {
    m_notice->setObjectName(QStringLiteral("InputsNotice"));
    m_taken.setObjectName(QStringLiteral("TakenTimer"));
    m_taken.setParent(this);
    m_taken.setSingleShot(true);
    m_taken.setInterval(UndoBar::Patience);
    connect(&m_taken, &QTimer::timeout, this, &InputsView::ForgetTaken);
    m_table->setObjectName(QStringLiteral("Inputs"));
    m_table->setAccessibleName(tr("Inputs"));
    m_table->setModel(&m_model);
    m_table->setItemDelegate(new PlainTextDelegate(m_table));
    m_table->setAlternatingRowColors(true);
    m_table->setTabKeyNavigation(false);  // Tab leads on to the buttons
    m_table->setWordWrap(false);
    m_table->setMinimumHeight(RowHeight * (LeastRows + 1));
    // It gives way to bars: what it would like to have is no reason to scroll the page.
    m_table->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setDefaultSectionSize(RowHeight);
    m_table->horizontalHeader()->setSectionResizeMode(InputModel::Name, QHeaderView::Stretch);
    m_table->horizontalHeader()->setHighlightSections(false);
    for (const auto& [column, characters] : Widths)
        m_table->setColumnWidth(column, qMax(m_table->fontMetrics().averageCharWidth() * characters,
                                             m_table->horizontalHeader()->sectionSizeHint(column)));
    FitModules();
    m_table->setColumnWidth(InputModel::State, WidthOfStates(m_table->fontMetrics()));
    m_table->installEventFilter(this);
    auto* const caption = new QLabel(tr("Inputs: name, frequency and state"), this);
    caption->setBuddy(m_table);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(caption);
    layout->addWidget(m_table, 1);
    layout->addWidget(m_notice);  // below, so that the rows stay where they are
    layout->addLayout(BuildButtons());
    connect(&m_model, &InputModel::SignalEntered, this, &InputsView::Tell);
    connect(&m_model, &InputModel::SignalEntered, this, &InputsView::Entered);
    connect(&m_model, &InputModel::SignalDoubted, this,
            [this](const QString& doubt) { Say(NoticeBar::ESeverity::Warning, tr("Taken. %1").arg(doubt)); });
    connect(&m_model, &InputModel::SignalManyChanged, this,
            [this](int cells, const std::vector<double>& cleared, const std::function<void()>& undo) {
                Q_EMIT Acted(TellChanged(cells, cleared), [undo, self = QPointer<InputsView>(this)] {
                    undo();
                    if (!self.isNull()) self->ForgetTaken();
                });
            });
    connect(&m_model, &QAbstractItemModel::modelReset, this, [this] {
        FitModules();
        ForgetOldTest();
        EnableTest();
    });
    connect(&m_model, &QAbstractItemModel::dataChanged, this, [this](const QModelIndex& first) {
        if (first.column() == InputModel::Module) FitModules();
        if (first.column() == InputModel::State) ForgetOldTest();
    });
    connect(m_table->selectionModel(), &QItemSelectionModel::currentChanged, this, [this] {
        ForgetOldTest();
        EnableTest();
    });
    connect(&m_test, &ConnectionTest::SignalAnswered, this, &InputsView::OnAnswered);
    connect(&m_test, &ConnectionTest::SignalFailed, this, &InputsView::OnFailed);
    EnableTest();
}

QString InputsView::TellChanged(int cells, const std::vector<double>& cleared) {
    const QString text = cells == 1 ? tr("One cell of the inputs is changed.")
                                    : tr("%1 cells of the inputs are changed.").arg(cells);
    if (cleared.empty()) return text;
    return text + QLatin1Char(' ') + tr("No input has any more: %1.").arg(frequencylist::Of(cleared));
}

QHBoxLayout* InputsView::BuildButtons() {
    auto* const row = new QHBoxLayout;
    const auto add = [&](const QString& text, const char* name, void (InputsView::*slot)()) {
        auto* const button = new QPushButton(text, this);
        button->setObjectName(QLatin1String(name));
        connect(button, &QPushButton::clicked, this, slot);
        row->addWidget(button);
        return button;
    };
    m_testButton = add(tr("&Test connection"), "TestConnection", &InputsView::TestConnection);
    m_testButton->setToolTip(tr("Reads the inputs of the module of the current row once"));
    row->addStretch();
    add(tr("&Paste"), "Paste", &InputsView::Paste)
        ->setToolTip(tr("Enters cells of a spreadsheet, from the current cell on (Ctrl+V)"));
    add(tr("&Import\u2026"), "Import", &InputsView::ChooseImport);
    add(tr("&Export\u2026"), "Export", &InputsView::ChooseExport);
    return row;
}

bool InputsView::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_table && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->matches(QKeySequence::Paste)) {
        Paste();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void InputsView::Tell(const QString& reason) {
    const QString text = reason.isEmpty() ? QString() : tr("Not taken. %1").arg(reason);
    Say(NoticeBar::ESeverity::Warning, text);
}

void InputsView::Say(NoticeBar::ESeverity severity, const QString& text) {
    m_shownTest.reset();
    m_isTaken = false;
    m_notice->Tell(severity, text);
}

void InputsView::SayTaken(const QString& text) {
    Say(NoticeBar::ESeverity::Information, text);
    m_isTaken = true;
    m_taken.start();
}

void InputsView::ForgetSaid() {
    Say(NoticeBar::ESeverity::Information, QString());
}

void InputsView::ForgetTaken() {
    if (m_isTaken) Say(NoticeBar::ESeverity::Information, QString());
}

/// \a told: what the outcome says of the module.
void InputsView::SayOfTest(NoticeBar::ESeverity severity, const QString& text, EModuleState told) {
    Say(severity, text);
    if (!m_table->currentIndex().isValid()) return;
    const ModuleState& module = m_model.GetModule(m_table->currentIndex().row());
    m_shownTest = TestShown{module.settings, module.state, told};
}

/// What a test told holds of one moment. It goes with the choice of another module, and when the module is in
/// another state than it was, and than the test said.
void InputsView::ForgetOldTest() {
    if (!m_shownTest) return;
    const QModelIndex current = m_table->currentIndex();
    if (!current.isValid()) return Say(NoticeBar::ESeverity::Information, QString());
    const ModuleState& module = m_model.GetModule(current.row());
    const bool isSame = module.settings.type == m_shownTest->module.type &&
                        module.settings.index == m_shownTest->module.index;
    const bool isTrue = module.state == m_shownTest->state || module.state == m_shownTest->told;
    if (!isSame || !isTrue) return Say(NoticeBar::ESeverity::Information, QString());
    m_shownTest->state = module.state;
}

/// As wide as the names of modules need, within bounds.
void InputsView::FitModules() {
    const QFontMetrics letters = m_table->fontMetrics();
    int width = letters.averageCharWidth() * LeastModule;
    QString last;
    for (int row = 0; row < m_model.rowCount(); ++row) {
        const QString name = m_model.index(row, InputModel::Module).data().toString();
        if (name != last) width = qMax(width, letters.horizontalAdvance(name) + BesideText);
        last = name;
    }
    width = qMin(width, letters.averageCharWidth() * MostModule);
    m_table->setColumnWidth(InputModel::Module,
                            qMax(width, m_table->horizontalHeader()->sectionSizeHint(InputModel::Module)));
}

void InputsView::Paste() {
    const QString text = QGuiApplication::clipboard()->text();
    if (text.isEmpty()) return;
    const QStringList lines = pastedcells::LinesOf(text);
    if (!inputcsv::IsHeader(lines.first())) {
        m_model.Paste(m_table->currentIndex(), lines);
    } else if (m_model.FromCsv(lines).isEmpty()) {
        SayTaken(tr("Names and frequencies of the clipboard are taken"));
    }
}

void InputsView::EnableTest() {
    m_testButton->setEnabled(!m_test.IsRunning() && m_table->currentIndex().isValid());
}

void InputsView::TestConnection() {
    if (m_test.IsRunning() || !m_table->currentIndex().isValid()) return;
    m_tested = m_model.GetModule(m_table->currentIndex().row()).settings;
    Say(NoticeBar::ESeverity::Information,
        tr("Testing %1 at %2\u2026").arg(m_tested.GetName(), m_tested.address));
    m_test.Start(m_tested.address, static_cast<int>(m_tested.frequencies.size()));
    EnableTest();
}

void InputsView::OnAnswered(quint32 bits) {
    QStringList keyed;
    for (std::size_t input = 0; input < m_tested.frequencies.size(); ++input)
        if (((bits >> input) & 1U) == 0)
            keyed << modulename::OfInput(m_tested.labels[input], static_cast<int>(input));
    const QString inputs =
        keyed.isEmpty() ? tr("no input is keyed") : tr("keyed: %1").arg(keyed.join(QStringLiteral(", ")));
    SayOfTest(NoticeBar::ESeverity::Information,
              tr("%1 at %2 answers at %3: %4").arg(m_tested.GetName(), m_tested.address, TimeOfDay(), inputs),
              EModuleState::Connected);
    EnableTest();
}

void InputsView::OnFailed(const QString& reason) {
    SayOfTest(NoticeBar::ESeverity::Warning,
              tr("%1 at %2 does not answer at %3: %4")
                  .arg(m_tested.GetName(), m_tested.address, TimeOfDay(), problemtext::Translated(reason)),
              EModuleState::Error);
    EnableTest();
}

void InputsView::ChooseExport() {
    const QString file = QFileDialog::getSaveFileName(this, tr("Export the inputs"),
                                                      QStringLiteral("inputs.csv"), FileFilter());
    if (!file.isEmpty()) ExportTo(file);
}

void InputsView::ChooseImport() {
    const QString file = QFileDialog::getOpenFileName(this, tr("Import inputs"), QString(), FileFilter());
    if (!file.isEmpty()) ImportFrom(file);
}

void InputsView::ExportTo(const QString& file) {
    QSaveFile saved(file);
    const QByteArray bytes = m_model.ToCsv().toUtf8();
    const bool isWritten =
        saved.open(QIODevice::WriteOnly) && saved.write(bytes) == bytes.size() && saved.commit();
    if (isWritten)
        Say(NoticeBar::ESeverity::Information, tr("Written to %1").arg(file));
    else
        Say(NoticeBar::ESeverity::Warning,
            tr("%1 cannot be written: %2").arg(file, problemtext::Translated(saved.errorString())));
}

void InputsView::ImportFrom(const QString& file) {
    QStringList lines;
    QString error;
    if (!TextFile::ReadLines(file, &lines, &error)) return Tell(problemtext::Translated(error));
    // Spreadsheets begin a file with the mark of its encoding.
    if (!lines.isEmpty() && lines[0].startsWith(QChar(QChar::ByteOrderMark))) lines[0].remove(0, 1);
    const QString reason = m_model.FromCsv(lines);
    if (reason.isEmpty())
        SayTaken(tr("Names and frequencies of %1 are taken").arg(file));
    else
        Say(NoticeBar::ESeverity::Warning, tr("%1 is not taken. %2").arg(file, reason));
}
