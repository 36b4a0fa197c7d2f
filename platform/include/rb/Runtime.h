// SPDX-License-Identifier: GPL-3.0-or-later
// Bringing the runtime up.
#pragma once

// Makes sure the toolkit's application object exists, so that fonts can be measured and pictures
// decoded. With no screen asked for (the scenario runner, tests), it uses the offscreen platform.
// The desktop program makes its own widget application first; this then does nothing.
void InitRuntime(int& argc, char** argv);
