// SPDX-License-Identifier: Apache-2.0
#pragma once

/// While it lives, the process can open no further file or socket, or few.
class DescriptorLimit {
  public:
    explicit DescriptorLimit(int left = 0);
    ~DescriptorLimit();
    DescriptorLimit(const DescriptorLimit&) = delete;
    DescriptorLimit& operator=(const DescriptorLimit&) = delete;

  private:
    unsigned long m_before = 0;
};
