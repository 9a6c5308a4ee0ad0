// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/tune/tunebar.h>

#include <apps/mcconsole/tune/frequencyfield.h>
#include <apps/mcconsole/tune/frequencypicker.h>
#include <apps/mcconsole/tune/frequencystep.h>
#include <apps/mcconsole/tune/tunemark.h>
#include <apps/mcconsole/tune/tunetexts.h>
#include <apps/pages/severitylook.h>

#include <platform/widgets/valuetext.h>

#include <QtCore/QEvent>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFrame>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStyle>
#include <QtWidgets/QToolButton>

namespace {

constexpr int FrameWidth = 2;                       // pixels
constexpr int MaxPlaceLength = 20;                  // characters of a station, beside the field
constexpr char LongField[] = "3000.000000000 MHz";  // that the field has room for

QLabel* PlainText(QWidget* parent, const char* name) {
    auto* const label = new QLabel(parent);
    label->setObjectName(QString::fromLatin1(name));
    label->setTextFormat(Qt::PlainText);
    return label;
}

bool IsWrong(Tuning::EState state) {
    return state == Tuning::EState::NoFrequency || state == Tuning::EState::OutOfRange ||
           state == Tuning::EState::Empty;
}

/// What tells two places of one name apart stands at the end of theirs.
QString PlaceText(const QString& place) {
    if (place.size() <= MaxPlaceLength) return valuetext::Shortened(place, MaxPlaceLength);
    constexpr int headLength = 8;
    QString tail = place.right(MaxPlaceLength - headLength);
    if (tail.at(0).isLowSurrogate()) tail.remove(0, 1);
    return valuetext::Shortened(place, headLength) + valuetext::Shortened(tail, MaxPlaceLength);
}

}  // namespace

TuneBar::TuneBar(Tuning& tuning, FrequencyBook& book, QWidget* parent)
    : QWidget(parent),
      m_tuning(tuning),
      m_caption(new QLabel(this)),
      m_picker(new FrequencyPicker(tuning, book, this)),
      m_entryRow(new QHBoxLayout),
      m_actualRow(new QHBoxLayout) {
    m_tune = new QPushButton(tr("&Tune"), this);
    m_tune->setObjectName(QStringLiteral("Tune"));
    m_tune->setFocusPolicy(Qt::TabFocus);  // a click leaves the operator in the field
    m_entryRow->addWidget(BuildField(), 1);
    m_entryRow->addWidget(m_understood);
    m_entryRow->addWidget(BuildSteps());
    m_entryRow->addWidget(m_tune);
    BuildActual();
    LayOut(false);
    m_caption->setObjectName(QStringLiteral("FrequencyCaption"));
    m_caption->setBuddy(m_field);
    SetPlace(QString());
    auto* const layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_caption, 0, 0);
    layout->addLayout(m_entryRow, 0, 1);
    layout->addWidget(new QLabel(tr("Tuned to:"), this), 1, 0);
    layout->addLayout(m_actualRow, 1, 1);
    layout->setColumnStretch(1, 1);

    m_picker->BeNextTo(*m_field, *m_step);
    setTabOrder(m_step, m_tune);

    connect(m_field, &QLineEdit::textEdited, &m_tuning, &Tuning::Enter);
    // What assistive technology writes counts as typed, or "Tune" would ask for what stands there no more.
    connect(m_field, &QLineEdit::textChanged, this, [this](const QString& text) {
        if (text != m_tuning.GetText()) m_tuning.Enter(text);
    });
    connect(m_field, &FrequencyField::Confirmed, this, &TuneBar::Tune);
    connect(m_field, &FrequencyField::TakenBack, this, &TuneBar::TakeBack);
    connect(m_field, &FrequencyField::Stepped, this, &TuneBar::Step);
    connect(m_tune, &QPushButton::clicked, this, &TuneBar::Tune);
    connect(m_picker, &FrequencyPicker::Chosen, this, &TuneBar::TakeFocus);
    connect(&m_tuning, &Tuning::Changed, this, &TuneBar::Show);
    Show();
}

QWidget* TuneBar::BuildField() {
    m_frame = new QFrame(this);
    m_frame->setObjectName(QStringLiteral("FrequencyFrame"));
    m_frame->setFrameShape(QFrame::Box);
    m_frame->setFrameShadow(QFrame::Plain);
    m_frame->setLineWidth(FrameWidth);
    m_field = new FrequencyField(m_frame);
    m_field->setObjectName(QStringLiteral("Frequency"));
    m_field->setToolTip(tr(
        "A frequency, with or without a unit: Hz, k, kHz, M, MHz, G or GHz; with a comma or a point. A plain "
        "number up to 30,000 counts MHz, above that hertz. Enter or \"Tune\" asks for it, Escape takes it "
        "back. The arrow keys and the wheel step, which asks for it once they rest."));
    m_field->setMinimumWidth(m_field->fontMetrics().horizontalAdvance(QLatin1String(LongField)));
    m_understood = PlainText(this, "Understood");
    m_understood->setToolTip(tr("What the entry is understood as"));
    m_understood->setMinimumWidth(
        m_understood->fontMetrics().horizontalAdvance(QStringLiteral("= 3000.000000 MHz")));
    auto* const layout = new QHBoxLayout(m_frame);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_field);
    return m_frame;
}

QWidget* TuneBar::BuildSteps() {
    auto* const box = new QWidget(this);
    m_step = new QComboBox(box);
    m_step->setObjectName(QStringLiteral("Step"));
    m_step->setFocusPolicy(Qt::StrongFocus);
    m_step->installEventFilter(this);
    m_step->setAccessibleName(tr("Step"));
    for (const FrequencyStep& step : FrequencyStep::All())
        m_step->addItem(step.Caption());
    connect(m_step, qOverload<int>(&QComboBox::activated), &m_tuning, &Tuning::ChooseStep);
    m_stepCaption = new QLabel(tr("St&ep:"), box);
    m_stepCaption->setBuddy(m_step);
    const auto make = [&](const char* name, Qt::ArrowType arrow, const QString& text, int count) {
        auto* const button = new QToolButton(box);
        button->setObjectName(QString::fromLatin1(name));
        button->setArrowType(arrow);
        button->setAutoRepeat(true);
        button->setFocusPolicy(Qt::NoFocus);  // the arrow keys do the same in the field
        button->setToolTip(text);
        button->setAccessibleName(text);
        connect(button, &QToolButton::clicked, this, [this, count] { Step(count); });
        return button;
    };
    m_down = make("StepDown", Qt::DownArrow, tr("One step down"), -1);
    m_up = make("StepUp", Qt::UpArrow, tr("One step up"), 1);
    auto* const layout = new QHBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    for (QWidget* const widget : {static_cast<QWidget*>(m_stepCaption), static_cast<QWidget*>(m_step),
                                  static_cast<QWidget*>(m_down), static_cast<QWidget*>(m_up)})
        layout->addWidget(widget);
    return box;
}

void TuneBar::BuildActual() {
    m_actual = PlainText(this, "TunedTo");
    QFont font = m_actual->font();
    font.setBold(true);
    m_actual->setFont(font);
    m_icon = PlainText(this, "TuneIcon");
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    m_icon->setFixedSize(size, size);
    m_mark = PlainText(this, "TuneMark");
    m_message = PlainText(this, "TuneMessage");
    m_message->setWordWrap(true);
    m_message->setMinimumWidth(1);  // long words in it do not make the window wider
    const int gap = 3 * style()->pixelMetric(QStyle::PM_LayoutHorizontalSpacing, nullptr, this);
    m_actualRow->addWidget(m_actual);
    m_actualRow->addSpacing(gap);
    m_actualRow->addWidget(m_icon);
    m_actualRow->addWidget(m_mark);
    m_actualRow->addWidget(m_message, 1);
}

/// In a narrow window what is chosen from stands below, and the step is known by its unit.
void TuneBar::LayOut(bool isNarrow) {
    constexpr int behindUnderstood = 2;
    m_isNarrow = isNarrow;
    m_stepCaption->setVisible(!isNarrow);
    m_entryRow->removeWidget(m_picker);
    m_actualRow->removeWidget(m_picker);
    if (isNarrow)
        m_actualRow->addWidget(m_picker);
    else
        m_entryRow->insertWidget(behindUnderstood, m_picker);
}

/// Of the width, by being narrow.
int TuneBar::RoomSaved() const {
    const int gap = style()->pixelMetric(QStyle::PM_LayoutHorizontalSpacing, nullptr, this);
    return m_picker->minimumSizeHint().width() + m_stepCaption->minimumSizeHint().width() + 2 * gap;
}

/// That of a narrow bar, or it could not become one.
QSize TuneBar::minimumSizeHint() const {
    const QSize least = QWidget::minimumSizeHint();
    return m_isNarrow ? least : least - QSize(RoomSaved(), 0);
}

void TuneBar::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    FitWidth();
}

void TuneBar::FitWidth() {
    const int wide = minimumSizeHint().width() + RoomSaved();
    if (m_isNarrow != (width() < wide)) LayOut(!m_isNarrow);
}

void TuneBar::Tune() {
    if (!m_tuning.Tune()) m_field->setFocus();
    m_field->selectAll();
}

void TuneBar::TakeBack() {
    m_tuning.Restore();
    m_field->selectAll();
}

void TuneBar::Step(int count) {
    m_tuning.Step(count);
}

void TuneBar::TakeFocus() {
    m_field->setFocus(Qt::ShortcutFocusReason);
    m_field->selectAll();
}

void TuneBar::SetPlace(const QString& place) {
    // What is a mark of a key to the label is a character to whoever chose the name.
    const QString shown = PlaceText(place).replace(QLatin1Char('&'), QLatin1String("&&"));
    m_caption->setText(place.isEmpty() ? tr("&Frequency:") : tr("&Frequency at %1:").arg(shown));
    m_field->setAccessibleName(place.isEmpty() ? tr("Frequency") : tr("Frequency at %1").arg(place));
    if (layout() != nullptr) FitWidth();
}

/// A user who scrolls does not mean the step that comes below the pointer.
bool TuneBar::eventFilter(QObject* watched, QEvent* event) {
    if (watched != m_step || event->type() != QEvent::Wheel || m_step->hasFocus())
        return QWidget::eventFilter(watched, event);
    event->ignore();
    return true;
}

/// A button that is held down would go on stepping where nobody looks.
void TuneBar::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    m_up->setDown(false);
    m_down->setDown(false);
}

void TuneBar::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange) Show();
}

void TuneBar::Show() {
    const Tuning::EState state = m_tuning.GetState();
    const bool mayTune = state != Tuning::EState::NoMpxOrv && state != Tuning::EState::Locked;
    ShowText();
    m_step->setCurrentIndex(m_tuning.GetStepIndex());
    m_field->setReadOnly(state == Tuning::EState::Locked);  // what is typed during a loss is not sent
    for (QWidget* const widget :
         {static_cast<QWidget*>(m_tune), static_cast<QWidget*>(m_up), static_cast<QWidget*>(m_down)})
        widget->setEnabled(mayTune);
    ShowActual();
    ShowMark(state);
    ShowMessage(tunetexts::Message(m_tuning));
}

void TuneBar::ShowText() {
    const QString text = m_tuning.GetText();
    if (m_field->text() != text) m_field->setText(text);
    m_understood->setText(tunetexts::Understood(m_tuning));
}

void TuneBar::ShowActual() {
    m_actual->setText(tunetexts::Actual(m_tuning));
}

void TuneBar::ShowMark(Tuning::EState state) {
    const TuneMark mark = TuneMark::Of(state, palette());
    QPalette colours = palette();
    colours.setColor(QPalette::WindowText, mark.colour);
    m_mark->setPalette(colours);
    m_mark->setText(mark.word);
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    m_icon->setPixmap(mark.severity ? severitylook::Icon(*mark.severity, *style()).pixmap(size) : QPixmap());
    // As wide in any case, so that nothing moves.
    if (!IsWrong(state)) colours.setColor(QPalette::WindowText, palette().color(QPalette::Window));
    m_frame->setPalette(colours);
    m_field->setPalette(palette());
}

void TuneBar::ShowMessage(const QString& text) {
    m_message->setText(text);
    m_field->setAccessibleDescription(text.isEmpty() ? m_mark->text() : text);
}
