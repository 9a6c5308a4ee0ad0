// SPDX-License-Identifier: Apache-2.0
#pragma once

/// The columns of the list of MpxORVs.
enum EListColumn { NameColumn, OperationModeColumn, ClientsColumn, CommentColumn, ColumnCount };
