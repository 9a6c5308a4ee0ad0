// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/useredit.h>

namespace {

int g_depth = 0;  // an edit may lead to another one

}  // namespace

UserEdit::UserEdit() {
    ++g_depth;
}

UserEdit::~UserEdit() {
    --g_depth;
}

bool UserEdit::IsUnderWay() {
    return g_depth > 0;
}
