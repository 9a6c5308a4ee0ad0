// SPDX-License-Identifier: Apache-2.0
// The least that a program does with the library: a tree, the status on it, an observer, a change.
#include <devicecontrol/multichannelserver/common/mcsstatus.h>
#include <devicecontrol/multichannelserver/common/mcstools.h>

#include <platform/values/tree.h>

#include <cstdio>

namespace {

class Printer final : public IObserver {
  public:
    explicit Printer(MCSStatus& status) : m_status(status) { m_status.AddObserver(this); }
    ~Printer() override { m_status.DeleteObserver(this); }
    Printer(const Printer&) = delete;
    Printer& operator=(const Printer&) = delete;

    void Update(Observable* /*source*/, TChangeCode code) override {
        if (code != changecode::ContentChanged) return;
        std::printf("%s = %d us, mode %s, %s\n", qUtf8Printable(m_status.GetSweepTime_ValuePath()),
                    m_status.GetSweepTime(), qUtf8Printable(m_status.GetOperationModeAsString()),
                    qUtf8Printable(MCSTools::FormatFrequencyRange(30e6, 88e6)));
    }

  private:
    MCSStatus& m_status;
};

}  // namespace

int main() {
    values::Tree tree;
    MCSStatus status(QStringLiteral("/MultiChannelServer/Status"));
    const Printer printer(status);
    status.GetOperationModeValue()->Select(OperationScan, nullptr);
    status.GetSweepTimeValue()->SetValue(250);
    return 0;
}
