// SPDX-License-Identifier: Apache-2.0
#include <platform/config/cfgsave.h>

#include <platform/config/store/cfgstore.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace {

using Stores = std::vector<std::weak_ptr<CfgStore>>;

int openSaves = 0;

Stores& Deferred() {
    static auto& stores = *new Stores;  // never destroyed: statics that go later may still save
    return stores;
}

bool IsSame(const std::weak_ptr<CfgStore>& a, const std::weak_ptr<CfgStore>& b) {
    return !a.owner_before(b) && !b.owner_before(a);
}

}  // namespace

CfgSave::CfgSave() {
    ++openSaves;
}

CfgSave::~CfgSave() {
    End();
}

bool CfgSave::End() {
    if (std::exchange(m_isOver, true) || --openSaves > 0) return true;
    QStringList problems;
    for (const std::weak_ptr<CfgStore>& deferred : std::exchange(Deferred(), {})) {
        const std::shared_ptr<CfgStore> store = deferred.lock();
        if (store && !store->CommitNow()) problems << store->GetProblem(QStringLiteral("not saved"));
    }
    m_problem = problems.join(QStringLiteral("; "));
    return problems.isEmpty();
}

bool CfgSave::Defer(const std::weak_ptr<CfgStore>& store) {
    if (openSaves == 0) return false;
    Stores& stores = Deferred();
    if (std::none_of(stores.begin(), stores.end(), [&](const auto& other) { return IsSame(store, other); }))
        stores.push_back(store);
    return true;
}
