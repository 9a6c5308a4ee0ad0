// SPDX-License-Identifier: Apache-2.0
#pragma once

/// What a client can ask of its MpxORV.
enum class ERequest { Frequency, BecomeMaster, RestartJob, BuiltInTest, Calibrate, ReportInterval };
