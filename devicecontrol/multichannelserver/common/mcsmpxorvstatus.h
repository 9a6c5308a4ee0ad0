// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/commonexport.h>

#include <platform/device/stddevicedefinition.h>
#include <platform/values/observable.h>
#include <platform/values/value.h>
#include <platform/values/valueselection.h>

#include <QtCore/QString>

namespace values {
class Node;
}

/// The status subtree of one multiplexed ORV, which is the child "Status" of the MpxORV's node: finds or
/// creates its node and values, observes them, and tells its own observers ContentChanged when one of the
/// values, or the list of connected clients, changes. Main thread; the tree owns the values.
///
/// A value that went away reads as a null pointer from its value accessor; its plain getter must not be
/// called then (GetOperationType, which gives the empty text, is the exception). Path accessors always work.
///
/// Copies use the same values but observe nothing. (fixed: copies-observe-nothing)
class MCS_COMMON_EXPORT MCSMpxORVStatus : public IObserver, public Observable {  // fixed: virtual-order
  public:
    explicit MCSMpxORVStatus(const QString& basePath);  ///< \a basePath is that of the node "Status".
    MCSMpxORVStatus(const MCSMpxORVStatus& other);
    /// Detaches from the values that this object had, as the destructor does.
    MCSMpxORVStatus& operator=(const MCSMpxORVStatus& other);
    ~MCSMpxORVStatus() override;

  protected:
    void Update(Observable* source, TChangeCode code) override;

  public:
    // clang-format off
    /// What the MpxORV is there for, as its server says.
    virtual void                    SetOperationType(const QString& type) const;
    virtual QString                 GetOperationType();
    virtual values::Value<QString>* GetOperationTypeValue() const;
    virtual QString                 GetOperationType_ValuePath();

    /// One item per client: its id as key, its name as text.
    virtual values::ValueSelection* GetConnectedClientsValue() const;
    virtual QString                 GetConnectedClients_ValuePath();
    /// Adds a client and makes it the current item. Whether the id is there already is not checked.
    virtual void                    AddConnectedClient(long id, const QString& name);
    /// An unknown id is ignored.
    virtual void                    RemoveConnectedClient(long id);

    virtual EOperationMode          GetOperationMode();  ///< what the device does for this MpxORV
    virtual QString                 GetOperationModeAsString();
    virtual values::ValueSelection* GetOperationModeValue() const;
    virtual QString                 GetOperationMode_ValuePath();

    virtual bool                    IsMaster() const;  ///< whether its job is the one that all follow
    virtual values::Value<bool>*    GetIsMasterValue() const;
    virtual QString                 GetIsMaster_ValuePath();

    virtual bool                    IsWatchingMaster() const;  ///< whether it follows the master's job
    virtual values::Value<bool>*    GetIsWatchingMasterValue() const;
    virtual QString                 GetIsWatchingMaster_ValuePath();

    /// A free text by whoever runs the server.
    virtual void                    SetComment(const QString& comment) const;
    virtual QString                 GetComment();
    virtual values::Value<QString>* GetCommentValue() const;
    virtual QString                 GetComment_ValuePath();

    /// The MpxORV's name: that of the status node's parent. Empty without one.
    virtual QString                 GetName();
    // clang-format on

  private:
    struct Fields;  ///< the table of the values

    void SetupStatusSubtree();
    void Detach();

    QString m_basePath;
    values::Node* m_pStaSubtree = nullptr;
    values::Value<QString>* m_pOperationType = nullptr;
    values::ValueSelection* m_pConnectedClients = nullptr;
    values::ValueSelection* m_pOperationMode = nullptr;
    values::Value<bool>* m_pIsMaster = nullptr;
    values::Value<bool>* m_pIsWatchingMaster = nullptr;
    values::Value<QString>* m_pComment = nullptr;
};
