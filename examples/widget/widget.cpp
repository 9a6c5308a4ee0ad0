// SPDX-License-Identifier: Apache-2.0
// widget [HOST [PORT]]: a widget of one's own, bound to a path: a switch, whether the server holds its
// device.
#include <devicecontrol/multichannelserver/common/multichannelserverclient.h>

#include <platform/values/tree.h>
#include <platform/values/visit.h>
#include <platform/widgets/ivalueview.h>
#include <platform/widgets/widgetbinding.h>

#include <QtGui/QPainter>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include <cstdio>

namespace {

/// A green disc, "on", for true and a grey ring, "off", for false; a click switches. Hatched while not live,
/// a tool tip with the path, a lock where one may not switch, the path by a middle click: all of that is the
/// binding's.
class Lamp : public QWidget, private IValueView {
  public:
    Lamp() : m_binding(*this, *this, values::Is<values::Value<bool>>, WidgetBinding::Editable) {
        resize(160, 60);
        m_binding.RefreshNow();
    }

    void Set_ValuePath(const QString& path) { m_binding.SetPath(path); }

  protected:
    void mouseReleaseEvent(QMouseEvent* /*event*/) override { m_binding.CommitSoon(); }
    bool event(QEvent* event) override {
        const bool isDone = QWidget::event(event);
        m_binding.CommitIfDue();  // last: whoever is told may destroy the widget
        return isDone;
    }
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(m_isOn ? Qt::darkGreen : Qt::gray, 3));
        painter.setBrush(m_isOn ? QBrush(Qt::darkGreen) : QBrush());
        painter.drawEllipse(10, 10, 40, 40);
        painter.setPen(palette().color(QPalette::WindowText));
        painter.drawText(QRect(65, 10, 90, 40), Qt::AlignVCenter,
                         m_isOn ? QStringLiteral("on") : QStringLiteral("off"));
    }

  private:
    void ShowValue(const values::ValueBase* value) override {
        const auto* const flag = static_cast<const values::Value<bool>*>(value);  // null: there is none
        m_isOn = flag != nullptr && flag->GetValue();
        update();
        std::printf("the lamp is %s\n", flag == nullptr ? "dark" : m_isOn ? "on" : "off");
        std::fflush(stdout);
    }
    void ShowAccess(bool mayEdit) override { setCursor(mayEdit ? Qt::PointingHandCursor : Qt::ArrowCursor); }
    void Commit(values::ValueBase& value) override {
        static_cast<values::Value<bool>&>(value).SetValue(!m_isOn);
    }

    bool m_isOn = false;
    WidgetBinding m_binding;
};

}  // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    const values::Tree tree;  // before all that uses it
    MultiChannelServerClient client;
    Lamp lamp;
    lamp.Set_ValuePath(QStringLiteral("/Server/Command/ShallBeConnected"));  // need not be there yet
    lamp.show();
    if (!client.ConnectToServer(words.value(1, QStringLiteral("localhost")),
                                words.value(2, QStringLiteral("7450")).toInt()) ||
        !client.ConnectToMCSControlTree(QStringLiteral("/Server"), CommandSegment))
        return 2;
    return QApplication::exec();
}
