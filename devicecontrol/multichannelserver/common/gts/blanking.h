// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/commonexport.h>
#include <devicecontrol/multichannelserver/common/gts/blankingsource.h>

#include <optional>
#include <vector>

class BlankingClient;

/// Answers whether a frequency is blanked right now: whether a ground transmitter that uses it is keyed.
/// Knows that from the value tree alone, where data modules publish their inputs below the node "GTS" of
/// "/ORVServer/". One per process. Main thread.
class MCS_COMMON_EXPORT Blanking {
  public:
    virtual ~Blanking();
    Blanking(const Blanking&) = delete;
    Blanking& operator=(const Blanking&) = delete;

    /// Created at the first call, after the tree; freed before it.
    static Blanking* Instance();
    /// Deletes the instance; the next Instance() is a new one, in which every client is enabled.
    void FreeInstance();

    /// Switches blanking on or off for one client. Null changes nothing.
    void EnableBlankingForClient(BlankingClient* client, bool enable);
    /// Whether the whole hertz of \a frequency are those of a frequency assigned to an active input: there is
    /// no tolerance and no bandwidth. False for null, for a client for which blanking is off, and for what
    /// cannot be a frequency. Takes the same time however many frequencies are assigned.
    bool IsFrequencyBlanked(double frequency, BlankingClient* client) const;
    /// Which input blanks \a frequency for those who are not excepted: of several the first, in the order of
    /// the tree. None where it is not blanked, and where the module that blanks it has gone unseen. Looks
    /// through all assignments.
    std::optional<BlankingSource> WhoBlanks(double frequency) const;
    /// All frequencies that are blanked for those who are not excepted: whole hertz, ascending, each once.
    std::vector<double> GetBlankedFrequencies() const;

  private:
    friend class BlankingClient;
    class BlankingImpl;

    Blanking();
    static void Forget(BlankingClient* client);

    static Blanking* m_pInstance;

    BlankingImpl* m_pImpl;  ///< owned
};
