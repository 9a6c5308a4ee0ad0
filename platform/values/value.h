// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/valuebase.h>
#include <platform/values/valuelist.h>
#include <platform/values/valuenumeric.h>

#include <QtCore/QString>

namespace values {

/// A plain value: bool, int (without limits) or text. Setting tells ContentChanged; setting an equal content
/// does nothing, unless every change is delivered.
template <class T>
class Value : public ValueBase {
  public:
    Value() = default;
    explicit Value(const T& content) : m_content(content) {}  ///< detached, and valid
    Value(const Value& other) = default;
    ~Value() override { SayGoodbye(); }

    T GetValue() const { return m_content; }  ///< as it is now
    void SetValue(const T& content, IObserver* originator = nullptr) {
        if (IsNoChange(content == m_content)) return;
        m_content = content;
        NotifyObservers(changecode::ContentChanged, originator);
    }

  protected:
    std::unique_ptr<TreeItem> CopyItem() const override { return std::make_unique<Value>(*this); }

  private:
    T m_content{};
};

MCS_PLATFORM_DECLARE_INSTANCE(Value<bool>);
MCS_PLATFORM_DECLARE_INSTANCE(Value<int>);
MCS_PLATFORM_DECLARE_INSTANCE(Value<QString>);

}  // namespace values
