// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/widgets/widgetbinding.h>

#include <QtCore/QString>

#include <array>
#include <memory>
#include <ostream>

namespace values {
class ValueBase;
}

/// One of the value-bound widgets, for what holds for all of them.
class Kind {
  public:
    virtual ~Kind() = default;
    virtual const char* GetName() const = 0;
    virtual QWidget* Create(QWidget* parent) const = 0;
    virtual void Bind(QWidget& widget, const QString& path) const = 0;
    virtual const WidgetBinding& GetBinding(const QWidget& widget) const = 0;
    /// What a person reads.
    virtual QString Read(const QWidget& widget) const = 0;
    /// Adds a value that the widget shows at \a path, with the first content.
    virtual values::ValueBase* AddValue(const char* path) const = 0;
    /// Gives \a value the first or the second content.
    virtual void SetContent(values::ValueBase& value, bool isSecond) const = 0;
    /// How that reads.
    virtual QString GetText(bool isSecond) const = 0;
    /// How it reads if there is nothing to show.
    virtual QString GetBlank() const { return QString(); }
    /// Makes an edit as a user does, away from the content that is shown; the widget has the focus.
    virtual void Edit(QWidget& /*widget*/) const {}
    virtual bool IsEditor() const { return true; }
};

/// VCLabel, VCCheckBox, VCComboBoxClassic, VCLineEdit, VCNumericFloatSpin, VCPushButton.
const std::array<const Kind*, 6>& AllKinds();
const std::array<const Kind*, 5>& EditorKinds();

inline void PrintTo(const Kind* kind, std::ostream* stream) {
    *stream << kind->GetName();
}
