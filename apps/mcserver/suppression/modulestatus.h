// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/node.h>
#include <platform/values/value.h>

#include <QtCore/QDateTime>
#include <QtCore/QString>

#include <vector>

struct ModuleView;

/// The node of one data module in the server's status. Main thread.
class ModuleStatus {
  public:
    /// Adds a node that shows \a module below \a parent, which outlives this.
    ModuleStatus(values::Node& parent, const ModuleView& module);

    /// Shows what people set. Its inputs may be others then.
    void ShowSettings(const ModuleView& module);
    void ShowState(const ModuleView& module);
    void ShowLastAnswer(const ModuleView& module);
    void NoteBlanked(int input, const QString& mpxOrv);
    /// Takes the node out of the tree.
    void Remove();

    /// Of the module's node below "GTS".
    QString GetNodeName() const { return m_nodeName; }
    /// For whoever goes through all modules: that this one is still there.
    void Mark(bool isThere) { m_isThere = isThere; }
    bool IsThere() const { return m_isThere; }

  private:
    using Text = values::Value<QString>;

    struct Input {
        values::Node* node = nullptr;
        Text* name = nullptr;
        values::ValueNumeric<double>* frequency = nullptr;
        values::Value<bool>* keyed = nullptr;
        Text* keyedSince = nullptr;
        Text* lastBlanked = nullptr;
    };

    void MakeInputs(std::size_t count);

    QString m_nodeName;
    bool m_isThere = true;
    QDateTime m_lastAnswer;
    values::Node* m_node = nullptr;  ///< the tree owns it, and what is below
    values::Node* m_inputsNode = nullptr;
    Text* m_name = nullptr;
    Text* m_type = nullptr;
    Text* m_address = nullptr;
    values::Value<int>* m_pollInterval = nullptr;
    Text* m_state = nullptr;
    Text* m_reason = nullptr;
    Text* m_stateSince = nullptr;
    Text* m_answersAgainSince = nullptr;
    Text* m_lastAnswerText = nullptr;
    std::vector<Input> m_inputs;
};
