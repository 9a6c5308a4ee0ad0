// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/commonexport.h>
#include <devicecontrol/multichannelserver/common/mcspolicy.h>

#include <platform/values/observable.h>
#include <platform/values/value.h>

#include <QtCore/QString>

#include <set>

class ICfg;

namespace values {
class Node;
}

/// The policies of one client. A set can show itself in the tree, as one switch per registered policy under a
/// node: then the set follows the switches, and the switches the set. Main thread.
///
/// Tells its observers PolicyAdded and PolicyRemoved, and ContentChanged whenever a switch was changed.
/// Copies hold the same policies and are not shown. The switches stay in the tree when the set goes.
class MCS_COMMON_EXPORT MCSPolicySet : public Observable, public IObserver {  // fixed: virtual-order
  public:
    using const_iterator = std::set<MCSPolicy>::const_iterator;

    static constexpr TChangeCode PolicyAdded = 5;
    static constexpr TChangeCode PolicyRemoved = 6;

    MCSPolicySet() = default;
    MCSPolicySet(const MCSPolicySet& other);
    /// Hides the set, then takes the policies of \a other. Neither the tree nor observers hear of it.
    MCSPolicySet& operator=(const MCSPolicySet& other);
    ~MCSPolicySet() override;

    virtual void Add(const MCSPolicy& policy);     ///< Tells PolicyAdded, unless it is there already.
    virtual void Remove(const MCSPolicy& policy);  ///< Tells PolicyRemoved, unless it is not there.
    virtual void AddAll();  ///< Adds one registered policy after the other, in name order.
    /// Removes one policy after the other, in name order.
    virtual void RemoveAll();
    virtual void SetContains(const MCSPolicy& policy, bool contains);  ///< Add or Remove.
    virtual bool Contains(const MCSPolicy& policy) const;  ///< Whether the set has a policy of that name.
    virtual const_iterator begin() const;                  ///< in name order
    virtual const_iterator end() const;                    ///< behind the last
    /// Takes every policy's state from \a cfg, where the keys are the policies' names; a missing key keeps
    /// the state. Null does nothing.
    virtual void ReadFromCfg(ICfg* cfg);
    /// Writes every policy's state to \a cfg and does not commit. Null does nothing.
    virtual void WriteToCfg(ICfg* cfg) const;
    /// Shows the set under \a node, or hides it for null. Missing switches are created from the set; of those
    /// that exist, either the set takes the state (\a fromTree) or they take the set's.
    virtual void ShowViewInTree(values::Node* node, bool fromTree);
    virtual values::Node* GetParentNodeInTree() const;  ///< Where it is shown; null while hidden.
    /// The names in name order, joined by ", "; "<none>" for an empty set.
    virtual QString ToString() const;

    /// Empties the set, then adds what a client may do unless told otherwise: alter frequency ranges and a
    /// single frequency, be job master, read a single frequency from the master's ranges, restart the job.
    void SetToDefaultPolicy();

    void Update(Observable* source, TChangeCode code) override;

  private:
    using Switch = values::Value<bool>;

    Switch* GetValueForName(const QString& name) const;
    void FromTree(const QString& name);
    void ToTree(const QString& name);
    /// Shows the policy \a name as a switch under the parent node and follows it.
    void ShowSwitch(const QString& name, bool fromTree);
    /// Detaches from all switches; \a line is the caller's, for the assertion that none is left.
    void DetachFromSwitches(int line);
    void SetParentNode(values::Node* node);

    std::set<MCSPolicy> m_policies;
    values::Node* m_pParentNode = nullptr;  ///< not owned; null while hidden
    std::set<Switch*> m_ObservedValues;     ///< not owned
};
