// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/vcnumericfloatspin.h>

#include <platform/values/visit.h>
#include <platform/widgets/hints/spokennumber.h>
#include <platform/widgets/hints/spokenwidget.h>
#include <platform/widgets/valuetext.h>

#include <QtCore/QPointer>
#include <QtCore/QScopedValueRollback>
#include <QtCore/QSignalBlocker>
#include <QtGui/QKeyEvent>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QStyle>

#include <cmath>
#include <limits>

namespace {

using NumericInt = values::ValueNumeric<int>;
using NumericReal = values::ValueNumeric<double>;

/// What a spin box has room for: a double does not tell larger numbers apart digit by digit.
constexpr double LargestShown = 1e15;
constexpr int MostDecimals = 15;  // more than that a double does not have

}  // namespace

VCNumericFloatSpin::VCNumericFloatSpin(QWidget* parent, const char* name, bool hasButtons)
    : QDoubleSpinBox(parent),
      m_binding(
          *this, *this, [this](const values::ValueBase& value) { return Accepts(value); },
          WidgetBinding::Editable) {
    spokenwidget::Announce(*this, &VCNumericFloatSpin::Speak);
    if (name != nullptr) setObjectName(QString::fromUtf8(name));
    setButtonSymbols(hasButtons ? UpDownArrows : NoButtons);
    setKeyboardTracking(false);
    setFocusPolicy(Qt::StrongFocus);  // the wheel alone must not get at it
    m_binding.WatchPart(*lineEdit());
    FillBackground();
    connect(lineEdit(), &QLineEdit::textEdited, this, &VCNumericFloatSpin::OnTyped);
    m_binding.RefreshNow();
}

VCNumericFloatSpin::~VCNumericFloatSpin() = default;

QAccessibleInterface* VCNumericFloatSpin::Speak(const QString& className, QObject* object) {
    if (className != QLatin1String(staticMetaObject.className())) return nullptr;
    return new SpokenNumber(*static_cast<VCNumericFloatSpin*>(object));
}

void VCNumericFloatSpin::SetNumericInt_ValuePath(const QString& path) {
    Bind(true, path);
}

void VCNumericFloatSpin::SetNumericDouble_ValuePath(const QString& path) {
    Bind(false, path);
}

void VCNumericFloatSpin::Bind(bool isInteger, const QString& path) {
    m_isInteger = isInteger;
    m_binding.SetPath(path);
}

void VCNumericFloatSpin::SetUnit(double factor, int decimals, const QString& unit) {
    Q_ASSERT(factor > 0);
    m_factor = factor;
    m_decimals = decimals;
    m_unit = unit;
    m_binding.CancelEdit();
}

// What a form says is not a programmer's word: what cannot be is left out.
void VCNumericFloatSpin::SetUnitFactor(double factor) {
    if (std::isfinite(factor) && factor > 0) SetUnit(factor, m_decimals, m_unit);
}

void VCNumericFloatSpin::SetUnitDecimals(int decimals) {
    SetUnit(m_factor, qBound(0, decimals, MostDecimals), m_unit);
}

bool VCNumericFloatSpin::Accepts(const values::ValueBase& value) const {
    if (m_isInteger) return values::Is<NumericInt>(value) || values::Is<values::Value<int>>(value);
    return values::Is<NumericReal>(value);
}

QString VCNumericFloatSpin::textFromValue(double shown) const {
    if (!m_isMeasuring && m_isBlank) return QString();
    const bool isSpecial = !m_isMeasuring && !m_special.isEmpty() && !m_binding.IsEditing();
    return isSpecial ? m_special : QDoubleSpinBox::textFromValue(shown);
}

QValidator::State VCNumericFloatSpin::validate(QString& input, int& position) const {
    if (m_isBlank || m_isDrawing || (!m_special.isEmpty() && input == m_shown)) return QValidator::Acceptable;
    // The toolkit takes one of the two for a separator of thousands and skips it: "1.5" would be 15.
    const int end = input.size() - (input.endsWith(suffix()) ? suffix().size() : 0);
    for (int i = 0; i < end; ++i)
        if (input.at(i) == QLatin1Char('.') || input.at(i) == QLatin1Char(','))
            input[i] = locale().decimalPoint();
    return QDoubleSpinBox::validate(input, position);
}

void VCNumericFloatSpin::stepBy(int steps) {
    if (!m_binding.MayEdit()) return m_binding.RefuseEdit();
    if (!m_special.isEmpty() || !hasAcceptableInput()) return;
    const QPointer<VCNumericFloatSpin> self(this);
    const double before = value();
    QDoubleSpinBox::stepBy(steps);
    if (self != nullptr) NoteStep(before);
}

void VCNumericFloatSpin::StepTo(double number) {
    const QPointer<VCNumericFloatSpin> self(this);
    const double before = value();
    setValue(number);
    if (self != nullptr) NoteStep(before);
}

void VCNumericFloatSpin::NoteStep(double before) {
    if (value() == before && !m_binding.IsEditing()) return;
    m_entered = value();
    m_binding.CommitSoon();
}

QAbstractSpinBox::StepEnabled VCNumericFloatSpin::stepEnabled() const {
    return m_binding.MayEdit() ? QDoubleSpinBox::stepEnabled() : StepEnabled(StepNone);
}

/// Measured with a number shown, so that the widgets around do not move when a value comes.
QSize VCNumericFloatSpin::sizeHint() const {
    const QScopedValueRollback<bool> measuring(m_isMeasuring, true);
    return QDoubleSpinBox::sizeHint() + RoomForUnit();
}

QSize VCNumericFloatSpin::minimumSizeHint() const {
    const QScopedValueRollback<bool> measuring(m_isMeasuring, true);
    return QDoubleSpinBox::minimumSizeHint() + RoomForUnit();
}

QSize VCNumericFloatSpin::RoomForUnit() const {
    return QSize(m_isBlank ? fontMetrics().horizontalAdvance(m_unit) : 0, 0);
}

/// The toolkit takes Enter for the end of an edit, and would make a number even of an empty field.
bool VCNumericFloatSpin::IsEnterWithoutEdit(const QEvent& event) const {
    if (event.type() != QEvent::KeyPress || m_binding.IsEditing()) return false;
    const int key = static_cast<const QKeyEvent&>(event).key();
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

bool VCNumericFloatSpin::event(QEvent* event) {
    if (IsEnterWithoutEdit(*event)) {
        selectAll();
        event->ignore();  // a dialog around it may close by Enter
        return true;
    }
    if (m_binding.TakeEditEvent(*event)) return true;
    if (event->type() == QEvent::StyleChange || event->type() == QEvent::Polish) FillBackground();
    const QPointer<VCNumericFloatSpin> self(this);
    const bool isHandled = QDoubleSpinBox::event(event);
    if (self != nullptr) m_binding.CommitIfDue();
    return isHandled;
}

/// A user who scrolls a form by the wheel does not mean the field that comes below the pointer.
void VCNumericFloatSpin::wheelEvent(QWheelEvent* event) {
    if (hasFocus() && m_binding.MayEdit())
        QDoubleSpinBox::wheelEvent(event);
    else
        event->ignore();
}

void VCNumericFloatSpin::OnTyped() {
    m_binding.BeginEdit();
    if (!hasFocus())
        setFocus();  // a dropped text is committed when the user leaves the field, as a typed one is
}

bool VCNumericFloatSpin::EndTyping(bool isConfirmed) {
    if (!isConfirmed && text() == m_shown) return false;
    if (!hasAcceptableInput()) {
        m_binding.Refuse(
            tr("Please enter a number from %1 to %2.")
                .arg(QDoubleSpinBox::textFromValue(minimum()), QDoubleSpinBox::textFromValue(maximum())));
        return false;
    }
    m_entered = valueFromText(text());
    return true;
}

void VCNumericFloatSpin::Commit(values::ValueBase& value) {
    if (auto* const real = dynamic_cast<NumericReal*>(&value)) {
        // The content has more digits than are shown. If the user typed what was shown, they stay.
        const QString entered = QDoubleSpinBox::textFromValue(m_entered);
        if (entered != QDoubleSpinBox::textFromValue(real->GetValue() / m_factor))
            real->SetValue(ToContent(m_entered));
    } else if (auto* const number = dynamic_cast<NumericInt*>(&value)) {
        number->SetValue(static_cast<int>(std::lround(m_entered)));
    } else if (auto* const plain = dynamic_cast<values::Value<int>*>(&value)) {
        plain->SetValue(static_cast<int>(std::lround(m_entered)));
    }
}

/// 98.7 MHz are 98700000 Hz, which 98.7 * 1e6 need not be.
double VCNumericFloatSpin::ToContent(double shown) const {
    const double digits = std::pow(10.0, m_decimals);
    const double whole = std::round(shown * digits);
    return digits >= m_factor ? whole / (digits / m_factor) : whole * (m_factor / digits);
}

void VCNumericFloatSpin::ShowValue(const values::ValueBase* value) {
    using IntLimits = std::numeric_limits<int>;
    const QSignalBlocker blocker(this);
    if (value == nullptr) return ShowNothing();
    if (m_isBlank || suffix() != m_unit) setSuffix(m_unit);
    m_isBlank = false;
    const auto* const real = dynamic_cast<const NumericReal*>(value);
    const int digits = real != nullptr ? m_decimals : 0;
    if (decimals() != digits) setDecimals(digits);
    if (real != nullptr)
        ShowNumber(real->GetValue() / m_factor, real->GetMin() / m_factor, real->GetMax() / m_factor);
    else if (const auto* number = dynamic_cast<const NumericInt*>(value))
        ShowNumber(number->GetValue(), number->GetMin(), number->GetMax());
    else if (const auto* plain = dynamic_cast<const values::Value<int>*>(value))
        ShowNumber(plain->GetValue(), IntLimits::min(), IntLimits::max());
}

void VCNumericFloatSpin::ShowNothing() {
    m_isBlank = true;
    m_special.clear();
    m_shown.clear();
    if (!suffix().isEmpty()) setSuffix(QString());
    setValue(value());  // makes the toolkit ask for the text again
}

void VCNumericFloatSpin::ShowNumber(double number, double minimum, double maximum) {
    const double lowest = qBound(-LargestShown, minimum, LargestShown);
    const double highest = qBound(-LargestShown, maximum, LargestShown);
    if (lowest != m_lowest || highest != m_highest) {
        m_lowest = lowest;
        m_highest = highest;
        setRange(lowest, highest);
        updateGeometry();
    }
    m_special = std::fabs(number) > LargestShown ? valuetext::Number(number) : QString();
    DrawNumber(number);
    m_shown = text();
}

/// The text alone can be drawn anew where it fills what is below it. This style draws nothing else there;
/// others, and style sheets, may.
void VCNumericFloatSpin::FillBackground() {
    lineEdit()->setAutoFillBackground(qstrcmp(style()->metaObject()->className(), "QFusionStyle") == 0);
}

/// The base class would have all of it drawn anew: the frame and the arrows too, which look the same.
void VCNumericFloatSpin::DrawNumber(double number) {
    const StepEnabled before = stepEnabled();
    const QScopedValueRollback<bool> drawing(m_isDrawing, true);  // what it makes of a number is acceptable
    const bool wasDisabled = testAttribute(Qt::WA_UpdatesDisabled);
    setAttribute(Qt::WA_UpdatesDisabled);
    setValue(number);
    setAttribute(Qt::WA_UpdatesDisabled, wasDisabled);
    if (stepEnabled() != before) update();
}

void VCNumericFloatSpin::ShowAccess(bool mayEdit) {
    if (isReadOnly() == mayEdit) setReadOnly(!mayEdit);
}
