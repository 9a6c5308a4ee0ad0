// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/pathbinding.h>

#include <QtCore/QString>

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

/// What the server tells at a glance, of itself and of one MpxORV: the contents known last, also of a
/// connection that is lost. What a server does not tell is not there. Main thread.
class ServerFacts : private PathBinding::IListener {
  public:
    enum class EFact {
        BootState,
        OperationMode,
        IsOnline,
        ConnectionState,
        ConnectionStateCode,
        ShallBeConnected,
        DeviceName,
        MasterName,
        MasterSince,
        MasterRangeFrom,
        MasterRangeTo,
        ModuleCount,
        AnsweringModules,
        KeyedFrequencies,
        UnsupervisedFrequencies,
        // Of the MpxORV.
        OwnMode,
        OwnFrequency,  ///< asked for last, or granted
        OwnTunedFrequency,
        OwnTunedSince,
        OwnAnswerCode,
        OwnIsMaster,
        OwnBlanking,  ///< whether it obeys the suppression
        OwnBlankingBy
    };

    /// \a changed is called after any of them has.
    explicit ServerFacts(std::function<void()> changed);

    /// Looks at the server's tree below \a basePath.
    void BindServer(const QString& basePath);
    /// Looks at the MpxORV whose node is at \a path; empty: none.
    void BindMpxOrv(const QString& path);

    std::optional<bool> Flag(EFact fact) const;
    std::optional<double> Number(EFact fact) const;
    std::optional<QString> Text(EFact fact) const;
    /// Of the current item of a selection.
    std::optional<int> Key(EFact fact) const;
    /// Null if there is none.
    const std::vector<double>* List(EFact fact) const;

    /// What the MpxORV is tuned to, in Hz; none if it is not. Servers that do not tell it are asked
    /// otherwise.
    std::optional<double> TunedFrequency() const;
    /// Whether \a hz is in the list that is called \a fact.
    bool Has(EFact fact, double hz) const;
    /// Whether any of them is only what was known before the connection was lost.
    bool IsStale() const;

  private:
    static constexpr std::size_t Count = static_cast<std::size_t>(EFact::OwnBlankingBy) + 1;

    void OnBindingChanged(PathBinding& binding, TChangeCode code) override;
    void Bind(const QString& basePath, bool isOwn);
    values::ValueBase* Value(EFact fact) const;
    template <class V>
    const V* As(EFact fact) const;

    std::function<void()> m_changed;
    bool m_isBinding = false;
    std::array<std::unique_ptr<PathBinding>, Count> m_bindings;
};
