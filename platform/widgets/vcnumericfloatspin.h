// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/widgets/ivalueview.h>
#include <platform/widgets/widgetbinding.h>
#include <platform/widgets/widgetsexport.h>

#include <QtWidgets/QDoubleSpinBox>

/// Shows and edits a number within its limits. Enter, leaving the field or a step sends the edit, Escape
/// restores; contents that come while the user types wait until then. GUI thread only.
class MCS_WIDGETS_EXPORT VCNumericFloatSpin : public QDoubleSpinBox, private IValueView {
    Q_OBJECT

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

    const WidgetBinding& GetBinding() const { return m_binding; }

    QString textFromValue(double shown) const override;
    QValidator::State validate(QString& input, int& position) const override;
    void stepBy(int steps) override;

  protected:
    bool event(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    StepEnabled stepEnabled() const override;

  private:
    void ShowValue(const values::ValueBase* value) override;
    void ShowAccess(bool mayEdit) override;
    void ShowNumber(double shown, double minimum, double maximum);
    void Bind(bool isInteger, const QString& path);
    void Commit();
    void Finish();
    bool IsEditing() const;
    void Restore();

    bool Accepts(const values::ValueBase& value) const;

    WidgetBinding m_binding;
    double m_factor = 1;
    int m_decimals = 3;
    bool m_isInteger = true;
    bool m_isBlank = true;  ///< nothing to show
};
