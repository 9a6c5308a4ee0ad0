// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/pathbinding.h>
#include <platform/widgets/ivalueview.h>
#include <platform/widgets/steadylabel.h>
#include <platform/widgets/widgetbinding.h>
#include <platform/widgets/widgetsexport.h>

/// Shows a value of any type as text, on one line and never as markup. What does not fit is marked, and told
/// by the tool tip. While a boolean elsewhere says that there is no value to speak of, shows "- - -" instead.
/// GUI thread only.
class MCS_WIDGETS_EXPORT VCLabel : public SteadyLabel, private IValueView, private PathBinding::IListener {
    Q_OBJECT

  public:
    /// \a name, the object name, may be null; \a windowFlags are Qt::WindowFlags.
    explicit VCLabel(QWidget* parent = nullptr, const char* name = nullptr, unsigned windowFlags = 0);
    ~VCLabel() override;

    /// Shows the value at \a path; empty: nothing. \a isDescribed: the tool tip tells about the value.
    void SetText_ValuePath(const QString& path, bool isDescribed);
    /// While the boolean at \a path is true, there is no value. Empty: there always is.
    void SetNoValue_ValuePath(const QString& path);
    /// How "- - -" is aligned, as Qt::Alignment; centered unless set.
    void SetAlignmentNoValue(int alignment);

    const WidgetBinding& GetBinding() const { return m_binding; }

  private:
    void ShowValue(const values::ValueBase* value) override;
    void ShowAccess(bool) override {}
    QString HiddenText() const override;
    void OnBindingChanged(PathBinding& binding, TChangeCode code) override;
    bool HasNoValue() const;

    WidgetBinding m_binding;
    PathBinding m_noValue;
    Qt::Alignment m_alignment;         ///< of a value
    Qt::Alignment m_alignmentNoValue;  ///< of "- - -"
    bool m_showsNoValue = false;
};
