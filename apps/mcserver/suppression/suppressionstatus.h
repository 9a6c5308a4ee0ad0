// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/clocktimer.h>
#include <apps/mcserver/suppression/modulestatus.h>

#include <platform/values/node.h>
#include <platform/values/observation.h>
#include <platform/values/value.h>

#include <QtCore/QObject>
#include <QtCore/QString>

#include <map>

class SuppressionPlant;

/// Shows in the server's status what holds of the suppression, for consoles: suppressionkeys.h names the
/// values. Sets what has changed, once per turn of the event loop, and nothing while nothing changes but the
/// time of the last answers, which it shows once a second. Takes its node away at its end. Main thread.
class SuppressionStatus : public QObject, private IObserver {
    Q_OBJECT

  public:
    /// How often times of answers are looked at.
    static constexpr std::chrono::milliseconds AnswerInterval{1000};

    /// \a plant is not owned, and goes later; null where there is no suppression.
    SuppressionStatus(const SuppressionPlant* plant, IClock& clock);
    ~SuppressionStatus() override;

    /// The MpxORV \a mpxOrv was kept from a frequency by the input \a input of the module with the node
    /// \a node.
    void NoteBlanked(const QString& node, int input, const QString& mpxOrv);

  private:
    void Update(Observable* source, TChangeCode code) override;
    void Provide();
    void LookSoon();
    void Look();
    void ShowModules();
    void ShowAnswers();

    const SuppressionPlant* m_plant;
    ClockTimer m_look;
    ClockTimer m_answers;
    bool m_haveSettingsChanged = true;
    Observation<values::Node> m_node;       ///< of the suppression
    values::Node* m_modulesNode = nullptr;  ///< goes with it, as the next do
    values::Value<int>* m_moduleCount = nullptr;
    values::Value<int>* m_answeringModules = nullptr;
    values::ValueList<double>* m_keyedFrequencies = nullptr;
    values::ValueList<double>* m_unsupervisedFrequencies = nullptr;
    std::map<int, ModuleStatus> m_modules;  ///< by number
};
