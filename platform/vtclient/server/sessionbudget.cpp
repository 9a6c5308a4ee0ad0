// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/server/sessionbudget.h>

namespace vt {

SessionBudget::Accounts::iterator SessionBudget::JoinOne(Accounts& accounts, const QString& name,
                                                         const Entry& entry) {
    const auto account = accounts.emplace(name, Account()).first;
    ++account->second.sessions;
    account->second.held += entry.held;
    return account;
}

void SessionBudget::LeaveOne(Accounts& accounts, Accounts::iterator account, const Entry& entry) {
    account->second.held -= entry.held;
    if (--account->second.sessions == 0) accounts.erase(account);
}

void SessionBudget::Join(Entry* entry, const QString& user, const QString& host) {
    entry->hasUser = !user.isEmpty();
    entry->hasHost = !host.isEmpty();
    if (entry->hasUser) entry->user = JoinOne(m_users, user, *entry);
    if (entry->hasHost) entry->host = JoinOne(m_hosts, host, *entry);
}

int SessionBudget::CountOf(const QString& user, const QString& host) const {
    const auto countIn = [](const Accounts& accounts, const QString& name) {
        const auto found = accounts.find(name);
        return found == accounts.end() ? 0 : found->second.sessions;
    };
    return std::max(countIn(m_users, user), countIn(m_hosts, host));
}

void SessionBudget::Leave(Entry* entry) {
    Charge(entry, 0);
    if (entry->hasUser) LeaveOne(m_users, entry->user, *entry);
    if (entry->hasHost) LeaveOne(m_hosts, entry->host, *entry);
    entry->hasUser = entry->hasHost = false;
}

}  // namespace vt
