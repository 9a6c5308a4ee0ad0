// SPDX-License-Identifier: Apache-2.0
#include "boundscenario.h"

#include "signalsource.h"
#include "stopwatch.h"

#include <platform/values/tree.h>
#include <platform/values/value.h>
#include <platform/widgets/refreshscheduler.h>
#include <platform/widgets/vclabel.h>
#include <platform/widgets/vcnumericfloatspin.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QEventLoop>
#include <QtCore/QSignalBlocker>
#include <QtCore/QTimer>
#include <QtWidgets/QGridLayout>

#include <memory>
#include <vector>

namespace bench {

namespace {

using Number = values::ValueNumeric<int>;

constexpr int Widgets = 1000;
constexpr int Columns = 20;
constexpr int Rate = 3700;   // updates a second
constexpr int TurnTime = 1;  // ms: they come one by one, as fast as a connection brings them
constexpr int Largest = 99999;

/// A window of widgets, and a way to update what one of them shows.
class Window {
  public:
    virtual ~Window() = default;
    virtual void Set(int index, int content) = 0;
    /// What the widget shows.
    virtual QString Read(int index) const = 0;

    void Show() {
        m_window.resize(1600, 1000);
        m_window.show();
        // Laid out and painted for the first time.
        QEventLoop loop;
        QTimer::singleShot(200, &loop, &QEventLoop::quit);
        loop.exec();
    }

  protected:
    void Place(QWidget* widget, int index) { m_layout->addWidget(widget, index / Columns, index % Columns); }

    QWidget m_window;

  private:
    QGridLayout* m_layout = new QGridLayout(&m_window);
};

template <class Widget>
class BoundWindow : public Window {
  public:
    BoundWindow() {
        for (int i = 0; i < Widgets; ++i) {
            auto value = std::make_unique<Number>(0, 0, Largest);
            value->SetName(QStringLiteral("Value%1").arg(i));
            values::Tree::Instance()->AddValue(QStringLiteral("/Bench"), value.get());
            m_values.push_back(value.release());
            m_widgets.push_back(new Widget);
            Bind(*m_widgets.back(), m_values.back()->GetPathName());
            Place(m_widgets.back(), i);
        }
    }
    ~BoundWindow() override {
        values::Tree::Instance()->Delete(values::Tree::Instance()->FindNode(QStringLiteral("/Bench")));
    }
    void Set(int index, int content) override {
        m_values[static_cast<std::size_t>(index)]->SetValue(content);
    }
    QString Read(int index) const override {
        RefreshScheduler::Instance().Flush();
        return m_widgets[static_cast<std::size_t>(index)]->text();
    }

  private:
    static void Bind(VCLabel& label, const QString& path) { label.SetText_ValuePath(path, true); }
    static void Bind(VCNumericFloatSpin& spin, const QString& path) { spin.SetNumericInt_ValuePath(path); }

    std::vector<Number*> m_values;
    std::vector<Widget*> m_widgets;
};

template <class Widget>
class SignalWindow : public Window {
  public:
    SignalWindow() {
        for (int i = 0; i < Widgets; ++i) {
            auto* const widget = new Widget;
            Prepare(*widget);
            m_sources.push_back(std::make_unique<SignalSource>());
            QObject::connect(m_sources.back().get(), &SignalSource::Changed, widget,
                             [widget](int content) { Fill(*widget, content); });
            m_widgets.push_back(widget);
            Place(widget, i);
        }
    }
    void Set(int index, int content) override { m_sources[static_cast<std::size_t>(index)]->Set(content); }
    QString Read(int index) const override { return m_widgets[static_cast<std::size_t>(index)]->text(); }

  private:
    static void Prepare(QLabel&) {}
    static void Prepare(QDoubleSpinBox& spin) {
        spin.setDecimals(0);
        spin.setRange(0, Largest);
    }
    static void Fill(QLabel& label, int content) { label.setText(QString::number(content)); }
    static void Fill(QDoubleSpinBox& spin, int content) {
        const QSignalBlocker blocker(&spin);
        spin.setValue(content);
    }

    std::vector<std::unique_ptr<SignalSource>> m_sources;
    std::vector<Widget*> m_widgets;
};

/// Updates widgets one after the other for \a seconds. Seconds of processor time that it took.
double Feed(Window& window, int seconds, Scoreboard& scoreboard) {
    window.Show();
    int updates = 0;
    const auto contentOf = [](int update) { return static_cast<int>((update * 2654435761U) % Largest); };
    QEventLoop loop;
    QElapsedTimer time;
    QTimer turn;
    turn.setTimerType(Qt::PreciseTimer);
    QObject::connect(&turn, &QTimer::timeout, &loop, [&] {
        const int due = static_cast<int>(qMin<qint64>(time.elapsed(), seconds * 1000) * Rate / 1000);
        for (; updates < due; ++updates)
            window.Set(updates % Widgets, contentOf(updates));
        if (updates == seconds * Rate) loop.quit();
    });
    const Stopwatch stopwatch;
    time.start();
    turn.start(TurnTime);
    loop.exec();
    const double busy = stopwatch.BusySeconds();
    for (int update = updates - Widgets; update < updates; ++update) {
        if (window.Read(update % Widgets) == QString::number(contentOf(update))) continue;
        scoreboard.Fail(QStringLiteral("a widget does not show what it was last given"));
        break;
    }
    return busy;
}

template <class W>
void Play(Scoreboard& scoreboard, const char* key, int seconds) {
    W window;
    scoreboard.Add(QLatin1String(key), Feed(window, seconds, scoreboard) / seconds);
}

void PlayRound(Scoreboard& scoreboard, bool isQuick) {
    const int seconds = isQuick ? 2 : 10;
    Play<BoundWindow<VCLabel>>(scoreboard, "bound labels", seconds);
    Play<SignalWindow<QLabel>>(scoreboard, "signalled labels", seconds);
    Play<BoundWindow<VCNumericFloatSpin>>(scoreboard, "bound spin boxes", seconds);
    Play<SignalWindow<QDoubleSpinBox>>(scoreboard, "signalled spin boxes", seconds);
}

Row RowOf(const char* title, const char* ours, const char* peer, double limit) {
    return {QLatin1String(title),         QStringLiteral("ms/s"), 1000.0,      QLatin1String(ours),
            QStringLiteral("Qt signals"), QLatin1String(peer),    Row::AtMost, limit};
}

}  // namespace

// A spin box asks for no layout: what is left is painting, of the number alone where the toolkit draws all of
// it.
Scenario BoundScenario() {
    return {
        QStringLiteral("bound widgets"),
        3,
        PlayRound,
        {RowOf("1,000 labels, 3,700 updates/s: CPU", "bound labels", "signalled labels", 0.5),
         RowOf("1,000 spin boxes, 3,700 updates/s: CPU", "bound spin boxes", "signalled spin boxes", 0.6)}};
}

}  // namespace bench
