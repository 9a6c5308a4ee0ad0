// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/pages/mpxorvs/mpxorvcontent.h>

#include <platform/values/node.h>
#include <platform/values/observation.h>
#include <platform/values/valuebase.h>

#include <array>

/// One MpxORV of the tree: notices what changes in it, and reads that when it is asked to. Main thread.
class MpxOrvRow : private IObserver {
  public:
    class IListener {
      public:
        virtual ~IListener();
        /// Something of \a row changed, which Read() will know; told often.
        virtual void OnRowChanged(MpxOrvRow& row) = 0;
        /// Its node goes. The content stays as it was read last.
        virtual void OnRowGone(MpxOrvRow& row) = 0;
    };

    MpxOrvRow(values::Node& node, bool isStatic, IListener& listener);
    MpxOrvRow(const MpxOrvRow&) = delete;
    MpxOrvRow& operator=(const MpxOrvRow&) = delete;

    /// Reads what there is. False if that is what was read last.
    bool Read();
    const MpxOrvContent& GetContent() const { return m_content; }
    /// Its node has gone, or nobody wants to know of it any more.
    bool IsGone() const { return !m_node; }
    /// Which node it is, or was; not to be followed.
    const values::Node* GetKey() const { return m_key; }
    /// Notices nothing any more.
    void Forget();

    // For the list that the row is in.
    int index = 0;        ///< its place there
    bool isTold = false;  ///< the list knows that it has changed

  private:
    enum EValue : std::size_t {
        OperationMode,
        IsMaster,
        IsWatchingMaster,
        ConnectedClients,
        Comment,
        TunedFrequency,
        TunedSince,
        BlankingSwitchedBy,
        BlankingSwitchedSince,
        Blanking,
        CountValues
    };

    void Update(Observable* source, TChangeCode code) override;
    void FindValues();
    void ReadState();
    template <class V>
    const V* Get(EValue value) const {
        return dynamic_cast<const V*>(m_values[value].Get());
    }
    QString Text(EValue value) const;
    bool Flag(EValue value, bool absent) const;

    IListener& m_listener;
    MpxOrvContent m_content;
    const values::Node* m_key;
    Observation<values::Node> m_node;
    std::array<Observation<values::ValueBase>, CountValues> m_values;
    bool m_isIncomplete = true;  ///< values may have come or gone
};
