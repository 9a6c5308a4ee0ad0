// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/pagetabs.h>

#include <QtWidgets/QProxyStyle>
#include <QtWidgets/QTabBar>

namespace {

/// The usual style, with less room beside titles.
class NarrowTabs : public QProxyStyle {
  public:
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override {
        constexpr int beside = 10;  // pixels, at both sides together
        return metric == PM_TabBarTabHSpace ? beside : QProxyStyle::pixelMetric(metric, option, widget);
    }
};

}  // namespace

PageTabs::PageTabs(QWidget* parent) : QTabWidget(parent) {
    setObjectName(QStringLiteral("Pages"));
    setDocumentMode(true);
    auto* const style = new NarrowTabs;
    style->setParent(tabBar());
    tabBar()->setStyle(style);
    tabBar()->setElideMode(Qt::ElideRight);
    tabBar()->setUsesScrollButtons(false);
}

PageTabs::~PageTabs() = default;
