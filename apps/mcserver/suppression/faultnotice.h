// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/codedtext.h>
#include <apps/pages/noticebar.h>

#include <vector>

/// Tells whoever sits before the server what of its configuration is not in use. GUI thread.
class FaultNotice : public NoticeBar {
    Q_OBJECT

  public:
    static constexpr std::size_t MaxShown = 5;

    explicit FaultNotice(const std::vector<CodedText>& faults, QWidget* parent = nullptr);
};
