// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/access/textlimits.h>

#include <devicecontrol/multichannelserver/common/mcskeys.h>

#include <platform/values/value.h>
#include <platform/values/valueaccess.h>

namespace {

void ShowLimit(const char* name, int limit) {
    const QString path = mcskeys::Join(mcskeys::DefaultBasePath(mcskeys::Status), QLatin1String(name));
    values::ProvideValue<values::Value<int>>(path, limit, true, nullptr);
}

}  // namespace

void TextLimits::Show() const {
    ShowLimit("MaxTextLength", text);
    ShowLimit("MaxCommentLength", comment);
}
