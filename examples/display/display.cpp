// SPDX-License-Identifier: Apache-2.0
// display [HOST [PORT]]: a display of one's own, of bound widgets and of a line that is made of two values.
#include <devicecontrol/multichannelserver/common/multichannelserverclient.h>

#include <platform/values/pathbinding.h>
#include <platform/values/tree.h>
#include <platform/values/visit.h>
#include <platform/widgets/vclabel.h>
#include <platform/widgets/vcnumericfloatspin.h>

#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFormLayout>

#include <cstdio>

namespace {

using Count = values::ValueNumeric<int>;

/// State, mode and channels of the device, and the frequency that channels begin with, which may be edited.
class StationDisplay : public QWidget, private PathBinding::IListener {
  public:
    StationDisplay() : m_free(*this, values::Is<Count>), m_used(*this, values::Is<Count>) {
        m_frequency.SetUnit(1e6, 6, QStringLiteral(" MHz"));  // contents are in Hz
        auto* const rows = new QFormLayout(this);
        rows->addRow(QStringLiteral("State"), &m_state);
        rows->addRow(QStringLiteral("Does"), &m_mode);
        rows->addRow(QStringLiteral("Channels"), &m_channels);
        rows->addRow(QStringLiteral("Begin with"), &m_frequency);
        m_soon.setSingleShot(true);
        connect(&m_soon, &QTimer::timeout, this, [this] { ShowChannels(); });
    }

    /// Shows the server whose tree is, or will be, at \a path.
    void SetServer_ValuePath(const QString& path) {
        m_state.SetText_ValuePath(path + QStringLiteral("/Status/BootState"), true);
        m_mode.SetText_ValuePath(path + QStringLiteral("/Status/OperationMode"), true);
        m_frequency.SetNumericDouble_ValuePath(path + QStringLiteral("/Config/DefaultFrequencyForChannel"));
        m_free.SetPath(path + QStringLiteral("/Status/FreeFreqChannels"));
        m_used.SetPath(path + QStringLiteral("/Status/UsedFreqChannels"));
    }

  private:
    // Both values change in one turn of the event loop: after it they fit each other.
    void OnBindingChanged(PathBinding& /*binding*/, TChangeCode /*code*/) override { m_soon.start(0); }
    void ShowChannels() {
        const auto* const unused = static_cast<const Count*>(m_free.GetValue());
        const auto* const used = static_cast<const Count*>(m_used.GetValue());
        QString line = QStringLiteral("not known");
        if (unused != nullptr && used != nullptr) {
            const int all = used->GetValue() + unused->GetValue();
            line = QStringLiteral("%1 of %2 in use").arg(used->GetValue()).arg(all);
        }
        m_channels.setEnabled(m_used.GetState() == EBindingState::Live);  // or it is the last one known
        if (line == m_channels.text()) return;
        m_channels.setText(line);
        std::printf("channels: %s\n", qUtf8Printable(line));
        std::fflush(stdout);
    }

    VCLabel m_state;
    VCLabel m_mode;
    QLabel m_channels;
    VCNumericFloatSpin m_frequency;
    QTimer m_soon;
    PathBinding m_free;
    PathBinding m_used;
};

}  // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    const values::Tree tree;  // before all that uses it
    MultiChannelServerClient client;
    StationDisplay display;
    display.SetServer_ValuePath(QStringLiteral("/Server"));
    display.show();
    if (!client.ConnectToServer(words.value(1, QStringLiteral("localhost")),
                                words.value(2, QStringLiteral("7450")).toInt()) ||
        !client.ConnectToMCSControlTree(QStringLiteral("/Server"), StatusSegment | ConfigSegment))
        return 2;
    return QApplication::exec();
}
