// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/wire/messagewriter.h>

namespace vt::wire {

// Never destroyed: clients and servers that are static say goodbye when whatever can be destroyed already is.
CborOutput& EmptyOutput() {
    static auto& output = *new CborOutput;
    output.Clear();
    return output;
}

}  // namespace vt::wire
