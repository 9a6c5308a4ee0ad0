// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <tests/soak/plant.h>

#include <devicecontrol/multichannelserver/common/gts/blankingclient.h>

#include <platform/values/node.h>
#include <platform/values/observable.h>
#include <platform/values/value.h>

#include <QtCore/QStringList>

#include <map>
#include <set>

namespace soak {

/// Looks at every change of what data modules publish, and at what follows from it, beside what is true of
/// the plant. Knows a module by the frequencies that are assigned to it. Main thread; goes before the tree.
class Witness final : public IObserver {
  public:
    explicit Witness(const Plant& plant);
    ~Witness() override;
    Witness(const Witness&) = delete;
    Witness& operator=(const Witness&) = delete;

    /// The frequency in Hz that is to be assigned to an input.
    static double FrequencyOf(int module, int input) { return 100e6 + module * 1e6 + input * 25e3; }

    /// Compares what Blanking answers with what the modules have published lately.
    void CompareBlanking();
    /// Whether \a module is published as connected, with the states that it has just now.
    bool IsTrulyShown(int module) const;

    qint64 Readings() const { return m_readings; }
    qint64 ErrorsWritten() const { return m_errorsWritten; }
    /// What was seen that must not be: the first of them, and how many.
    const QStringList& FalseStates() const { return m_falseStates; }
    int CountFalseStates() const { return m_falseCount; }

    void Update(Observable* source, TChangeCode code) override;

  private:
    using Discretes = values::ValueNumeric<int>;
    using Assignments = values::ValueList<double>;
    struct Published {
        Discretes* discretes = nullptr;
        Assignments* assignments = nullptr;
    };

    /// -1 without assignments.
    static int ModuleOf(const Published& published);
    void Discover();
    void Observe(values::Node* node);
    void Forget(values::Node* node);
    void Check(const Published& published);
    void CompareBlanking(int module, quint32 states);
    void Report(const QString& text);

    const Plant& m_plant;
    BlankingClient m_client;
    values::Node* m_node;
    values::ValueBase* m_error = nullptr;
    std::map<values::Node*, Published> m_published;
    bool m_isChanged = false;  ///< since CompareBlanking()
    qint64 m_readings = 0;
    qint64 m_errorsWritten = 0;
    int m_falseCount = 0;
    QStringList m_falseStates;
};

}  // namespace soak
