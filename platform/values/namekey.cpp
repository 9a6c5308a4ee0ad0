// SPDX-License-Identifier: Apache-2.0
#include <platform/values/namekey.h>

#include <QtCore/QRandomGenerator>

const values::NameKey::Secret& values::NameKey::TheSecret() {
    static const Secret secret = [] {
        QRandomGenerator& random = *QRandomGenerator::system();
        Secret drawn{};
        for (std::uint64_t& word : drawn.words)
            word = random.generate64();
        drawn.length = random.generate64() | 1;  // odd: loses nothing
        drawn.factor = random.generate64() | 1;
        return drawn;
    }();
    return secret;
}
