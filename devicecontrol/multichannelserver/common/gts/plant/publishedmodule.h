// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/node.h>
#include <platform/values/observation.h>
#include <platform/values/value.h>

#include <QtCore/QString>

#include <vector>

/// What a data module shows of itself in the value tree, in a node of its own below the node "GTS". Blanking
/// reads it there. Main thread.
class PublishedModule {
  public:
    /// What is to be shown.
    struct Content {
        int index = 0;
        bool isConnected = false;
        unsigned long inputDiscretes = 0;
        unsigned short numberOfInputs = 0;
        const std::vector<double>& frequencies;  ///< Hz, by input
    };

    /// Observes its items by \a owner, which passes on what it is told, and is not told of what is written
    /// here.
    explicit PublishedModule(IObserver& owner);

    /// Makes or finds the node \a name with its values, in place of one of another name. Nothing, with a
    /// trace that names \a type, where there is no node "GTS".
    void Provide(const QString& name, const QString& type, const Content& content);
    void Refresh(const Content& content);
    void WriteInputDiscretes(unsigned long bits);
    /// Takes the node out of the tree.
    void Remove();

    /// Somebody else did something with one of the items: says so, and stops using one that goes.
    void OnUpdate(Observable* source, TChangeCode code);

  private:
    using Number = values::ValueNumeric<int>;
    using Assignments = values::ValueList<double>;

    void ProvideValues(values::Node& node);
    template <class V>
    static V* ProvideChild(values::Node& node, const QString& name);
    void WriteAssignments(const std::vector<double>& frequencies);
    const char* NameOf(const Observable* item) const;
    void ForgetIfGoingAway(Observable* source);
    void Forget();

    IObserver& m_owner;
    Observation<values::Node> m_pModuleNode;
    Observation<Number> m_pInputDiscretes;
    Observation<Number> m_pIndex;
    Observation<Assignments> m_pAssignments;
};
