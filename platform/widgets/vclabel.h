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
    Q_PROPERTY(QByteArray valuePath READ GetValuePath WRITE SetValuePath)
    Q_PROPERTY(bool described READ IsDescribed WRITE SetDescribed)
    Q_PROPERTY(QByteArray noValuePath READ GetNoValuePath WRITE SetNoValuePath)
    Q_PROPERTY(Qt::Alignment alignmentNoValue READ GetAlignmentNoValue WRITE SetAlignmentOfNoValue)

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

    const WidgetBinding& GetBinding() const { return m_binding; }  ///< for who asks about its value

  private:
    // As forms have it, in UTF-8: texts of forms are translated, and bytes are not.
    QByteArray GetValuePath() const { return m_binding.GetPath().toUtf8(); }
    void SetValuePath(const QByteArray& path) { m_binding.SetPath(QString::fromUtf8(path)); }
    bool IsDescribed() const { return m_binding.IsDescribed(); }
    void SetDescribed(bool isDescribed) { m_binding.SetDescribed(isDescribed); }
    QByteArray GetNoValuePath() const { return m_noValue.GetPath().toUtf8(); }
    void SetNoValuePath(const QByteArray& path) { SetNoValue_ValuePath(QString::fromUtf8(path)); }
    Qt::Alignment GetAlignmentNoValue() const { return m_alignmentNoValue; }
    void SetAlignmentOfNoValue(Qt::Alignment alignment) { SetAlignmentNoValue(int(alignment)); }

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
