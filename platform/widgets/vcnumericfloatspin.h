// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/widgets/ivalueview.h>
#include <platform/widgets/widgetbinding.h>
#include <platform/widgets/widgetsexport.h>

#include <QtWidgets/QDoubleSpinBox>

class QAccessibleInterface;

/// Shows and edits a number within its limits. Enter, leaving the field or a step sends the edit, Escape
/// restores; contents that come while the user types wait until then. A number that was not edited is never
/// sent, rounded to what is shown of it. Comma and point both are the decimal point: digits are not grouped.
/// Contents that come from the tree are shown without a signal. GUI thread only.
class MCS_WIDGETS_EXPORT VCNumericFloatSpin : public QDoubleSpinBox, private IValueView {
    Q_OBJECT
    Q_PROPERTY(QByteArray valuePath READ GetValuePath WRITE SetValuePath)
    Q_PROPERTY(bool integer READ IsInteger WRITE SetInteger)
    Q_PROPERTY(double unitFactor READ GetUnitFactor WRITE SetUnitFactor)
    Q_PROPERTY(int unitDecimals READ GetUnitDecimals WRITE SetUnitDecimals)
    Q_PROPERTY(QString unit READ GetUnit WRITE SetUnitText)

  public:
    /// \a name, the object name, may be null. \a hasButtons: with arrows for single steps.
    explicit VCNumericFloatSpin(QWidget* parent = nullptr, const char* name = nullptr,
                                bool hasButtons = true);
    ~VCNumericFloatSpin() override;

    /// Binds to the integer at \a path, with or without limits; empty: to nothing.
    void SetNumericInt_ValuePath(const QString& path);
    /// Binds to the floating-point number at \a path; empty: to nothing.
    void SetNumericDouble_ValuePath(const QString& path);
    /// Shows floating-point contents divided by \a factor, with \a decimals and \a unit behind: 1e6, 6 and
    /// " MHz" for contents in Hz. As they are, with 3 decimals, unless set.
    void SetUnit(double factor, int decimals, const QString& unit);

    const WidgetBinding& GetBinding() const { return m_binding; }  ///< for who asks about its value

    QString textFromValue(double shown) const override;
    QValidator::State validate(QString& input, int& position) const override;
    void stepBy(int steps) override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    bool event(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    StepEnabled stepEnabled() const override;

  private:
    friend class SpokenNumber;
    // As forms have it, in UTF-8: texts of forms are translated, and bytes are not.
    QByteArray GetValuePath() const { return m_binding.GetPath().toUtf8(); }
    void SetValuePath(const QByteArray& path) { m_binding.SetPath(QString::fromUtf8(path)); }
    bool IsInteger() const { return m_isInteger; }
    void SetInteger(bool isInteger) { Bind(isInteger, m_binding.GetPath()); }
    double GetUnitFactor() const { return m_factor; }
    void SetUnitFactor(double factor);
    int GetUnitDecimals() const { return m_decimals; }
    void SetUnitDecimals(int decimals);
    QString GetUnit() const { return m_unit; }
    void SetUnitText(const QString& unit) { SetUnit(m_factor, m_decimals, unit); }

    static QAccessibleInterface* Speak(const QString& className, QObject* object);
    void ShowValue(const values::ValueBase* value) override;
    void ShowAccess(bool mayEdit) override;
    bool EndTyping(bool isConfirmed) override;
    void Commit(values::ValueBase& value) override;
    void Bind(bool isInteger, const QString& path);
    bool Accepts(const values::ValueBase& value) const;
    void ShowNothing();
    void ShowNumber(double number, double minimum, double maximum);
    void FillBackground();
    void DrawNumber(double number);
    void OnTyped();
    void StepTo(double number);
    void NoteStep(double before);
    bool IsEnterWithoutEdit(const QEvent& event) const;
    double ToContent(double shown) const;
    QSize RoomForUnit() const;

    WidgetBinding m_binding;
    double m_factor = 1;
    int m_decimals = 3;
    QString m_unit;
    double m_lowest = 0;  ///< of the range that is set
    double m_highest = 0;
    QString m_shown;       ///< as it was when the content was shown
    QString m_special;     ///< of a content that there are not enough digits for
    double m_entered = 0;  ///< while that is not committed
    bool m_isInteger = true;
    bool m_isBlank = true;               ///< nothing to show
    mutable bool m_isMeasuring = false;  ///< asked for texts only to learn how much room they take
    bool m_isDrawing = false;
};
