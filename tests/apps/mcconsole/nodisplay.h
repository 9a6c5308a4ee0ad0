// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QProcessEnvironment>

#include <memory>

/// Until it is given back, programs that this one starts in \a environment have no display.
std::shared_ptr<void> WithoutDisplay(QProcessEnvironment& environment);
