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

/// The server's status subtree: finds or creates its node and values, observes them, and tells its own
/// observers ContentChanged whenever one of them changes. There are no setters: who writes the status does so
/// through the values. Main thread; the tree owns the values.
///
/// A value that went away reads as a null pointer from its value accessor; its plain getter must not be
/// called then. Path accessors always work.
///
/// Copies use the same values but observe nothing (fixed: copies-observe-nothing): they are never told of
/// changes, nor that a value went away.
class MCS_COMMON_EXPORT MCSStatus : public IObserver, public Observable {  // fixed: virtual-order
  public:
    explicit MCSStatus(const QString& basePath);  ///< \a basePath is that of the status node.
    MCSStatus(const MCSStatus& other);
    /// Detaches from the values that this object had, as the destructor does.
    MCSStatus& operator=(const MCSStatus& other);
    ~MCSStatus() override;

  protected:
    void Update(Observable* source, TChangeCode code) override;

  public:
    // clang-format off
    virtual EBooState                  GetBootState();  ///< how far the device has got
    virtual QString                    GetBootStateAsString();
    virtual values::ValueSelection*    GetBootStateValue() const;
    virtual QString                    GetBootState_ValuePath();

    virtual EOperationMode             GetOperationMode();  ///< what the device does
    virtual QString                    GetOperationModeAsString();
    virtual values::ValueSelection*    GetOperationModeValue() const;
    virtual QString                    GetOperationMode_ValuePath();

    virtual int                        GetFreeFreqChannels() const;  ///< channels that nobody has tuned
    virtual values::ValueNumeric<int>* GetFreeFreqChannelsValue() const;
    virtual QString                    GetFreeFreqChannels_ValuePath();

    virtual int                        GetUsedFreqChannels() const;  ///< channels that MpxORVs have tuned
    virtual values::ValueNumeric<int>* GetUsedFreqChannelsValue() const;
    virtual QString                    GetUsedFreqChannels_ValuePath();

    virtual bool                       IsMcsMasterJobControlled() const;  ///< whether all follow one's job
    virtual values::Value<bool>*       GetMcsMasterJobControlledValue() const;
    virtual QString                    GetMcsMasterJobControlled_ValuePath();

    virtual int                        GetSweepTime() const;  ///< µs (fixed: sweep-in-microseconds)
    virtual values::ValueNumeric<int>* GetSweepTimeValue() const;
    virtual QString                    GetSweepTime_ValuePath();

    virtual bool                       IsOnline() const;  ///< whether the server has its device
    virtual values::Value<bool>*       GetOnlineValue() const;
    virtual QString                    GetOnline_ValuePath();

    virtual QString                    GetConnectionState();  ///< the same, in words for people
    virtual values::Value<QString>*    GetConnectionStateValue() const;
    virtual QString                    GetConnectionState_ValuePath();

    virtual int                        GetStaticMpxORVs() const;  ///< how many the configuration defines
    virtual values::ValueNumeric<int>* GetStaticMpxORVsValue() const;
    virtual QString                    GetStaticMpxORVs_ValuePath();

    virtual int                        GetDynamicMpxORVs() const;  ///< how many clients have made
    virtual values::ValueNumeric<int>* GetDynamicMpxORVsValue() const;
    virtual QString                    GetDynamicMpxORVs_ValuePath();

    virtual QString                    GetLogMessage();  ///< the last line of the server's log; each is told
    virtual values::Value<QString>*    GetLogMessageValue() const;
    virtual QString                    GetLogMessage_ValuePath();
    // clang-format on

  private:
    struct Fields;  ///< the table of the values

    void SetupStatusSubtree();
    void Detach();

    QString m_basePath;
    values::Node* m_pStaSubtree = nullptr;
    values::ValueSelection* m_pBootState = nullptr;
    values::ValueSelection* m_pOperationMode = nullptr;
    values::ValueNumeric<int>* m_pFreeFreqChannels = nullptr;
    values::ValueNumeric<int>* m_pUsedFreqChannels = nullptr;
    values::Value<bool>* m_pMcsMasterJobControlled = nullptr;
    values::ValueNumeric<int>* m_pSweepTime = nullptr;
    values::Value<bool>* m_pOnline = nullptr;
    values::Value<QString>* m_pConnectionState = nullptr;
    values::ValueNumeric<int>* m_pStaticMpxORVs = nullptr;
    values::ValueNumeric<int>* m_pDynamicMpxORVs = nullptr;
    values::Value<QString>* m_pLogMessage = nullptr;
};
