// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/hamlib/hamlibmodule.h>
#include <apps/mcserver/hamlib/irig.h>

std::unique_ptr<IRigMaker> hamlibmodule::Load(const HamlibSettings& /*settings*/, QString* error) {
    *error = QStringLiteral("this build knows no Hamlib");
    return nullptr;
}
