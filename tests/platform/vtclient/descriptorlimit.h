// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Lets the process open as many files and sockets as the system allows it: at first these are 1024 in many a
/// shell.
void RaiseDescriptorLimit();

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
