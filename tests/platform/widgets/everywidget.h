// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <tests/platform/widgets/kinds.h>
#include <tests/platform/widgets/widgettest.h>

/// A test that holds for all kinds of widgets: one of them on a window.
class EveryWidget : public widgettest::WidgetTest, public testing::WithParamInterface<const Kind*> {
  protected:
    EveryWidget() : m_widget(GetParam()->Create(&m_window)) {
        m_widget->setGeometry(10, 10, 200, 30);
        m_window.show();
    }

    const Kind& GetKind() const { return *GetParam(); }
    void Bind(const char* path) { GetKind().Bind(*m_widget, widgettest::Text(path)); }
    QString Read() const {
        widgettest::Flush();
        return GetKind().Read(*m_widget);
    }
    EBindingState GetState() const { return GetKind().GetBinding(*m_widget).GetState(); }
    /// Bound to a live value, with the first content.
    void ExpectLive() const {
        EXPECT_EQ(Read(), GetKind().GetText(false));
        EXPECT_EQ(GetState(), EBindingState::Live);
        EXPECT_EQ(widgettest::VeilOf(*m_widget), nullptr);
        EXPECT_EQ(m_widget->accessibleDescription(), QString());
    }
    /// Blank, and looking like it.
    void ExpectBlank(EBindingState state) const {
        EXPECT_EQ(Read(), GetKind().GetBlank());
        EXPECT_EQ(GetState(), state);
        EXPECT_NE(widgettest::VeilOf(*m_widget), nullptr);
        EXPECT_TRUE(m_widget->accessibleDescription().startsWith(widgettest::Text("Not connected")));
    }

    QWidget* m_widget;
};

inline std::string NameOfKind(const testing::TestParamInfo<const Kind*>& info) {
    return info.param->GetName();
}
