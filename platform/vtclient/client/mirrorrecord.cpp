// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/client/mirrorrecord.h>

#include <platform/vtclient/client/treemirror.h>

namespace vt {

void MirrorRecord::Update(Observable* /*source*/, TChangeCode code) {
    mirror->OnUpdate(*this, code);
}

}  // namespace vt
