// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/valuebase.h>

#include <limits>

namespace values {

/// A number with limits: int or double. The content always lies within [minimum, maximum], which at first are
/// the type's lowest and highest finite number.
///
/// A content beyond a limit becomes the limit. Limits never cross: one that is set beyond the other takes the
/// other along. Setting a limit tells DescriptionChanged, and ContentChanged after it if the content had to
/// move. NaN is refused everywhere; an infinity is a content only where a limit is infinite.
template <class T>
class ValueNumeric : public ValueBase {
  public:
    ValueNumeric() = default;
    ValueNumeric(T content, T minimum, T maximum);  ///< A limit that is NaN is none.
    ValueNumeric(const ValueNumeric& other) = default;
    ~ValueNumeric() override { SayGoodbye(); }

    T GetValue() const { return m_content; }  ///< within the limits
    T GetMin() const { return m_minimum; }    ///< the lowest content
    T GetMax() const { return m_maximum; }    ///< the highest content
    void SetValue(T content, IObserver* originator = nullptr) {
        if (IsNan(content)) return TraceRefusal("content NaN");
        content = Clamped(content);
        if (IsNoChange(content == m_content)) return;
        m_content = content;
        NotifyObservers(changecode::ContentChanged, originator);
    }  ///< tells ContentChanged to all but \a originator
    void SetMin(T minimum, IObserver* originator = nullptr);  ///< takes maximum and content along
    void SetMax(T maximum, IObserver* originator = nullptr);  ///< takes minimum and content along

  protected:
    std::unique_ptr<TreeItem> CopyItem() const override { return std::make_unique<ValueNumeric>(*this); }

  private:
    static bool IsNan(T number) { return number != number; }
    T Clamped(T content) const {
        return content < m_minimum ? m_minimum : content > m_maximum ? m_maximum : content;
    }
    void SetLimits(T minimum, T maximum, IObserver* originator);

    T m_content = 0;
    T m_minimum = std::numeric_limits<T>::lowest();
    T m_maximum = (std::numeric_limits<T>::max)();  // in parentheses: some systems have a macro of that name
};

MCS_PLATFORM_DECLARE_INSTANCE(ValueNumeric<int>);
MCS_PLATFORM_DECLARE_INSTANCE(ValueNumeric<double>);

}  // namespace values
