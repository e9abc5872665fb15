// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15

// Text that is shown as it is. Qt would take a learner or a file called "<img src=...>" for markup,
// so no page uses Text, Label or the attached ToolTip itself.
Text {
    textFormat: Text.PlainText
}
