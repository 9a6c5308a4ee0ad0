// SPDX-License-Identifier: Apache-2.0
#include "handwritten.h"

// Out of sight of the listeners' classes, as in any real program; else the compiler does away with the calls.
void handwritten::Value::Tell(int code) {
    for (Listener* listener : listeners)
        listener->OnChanged(this, code);
}
