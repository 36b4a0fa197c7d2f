// SPDX-License-Identifier: GPL-3.0-or-later
// The whole platform, as the application code sees it.
#pragma once

#include "rb/Controls.h"
#include "rb/Core.h"
#include "rb/Design.h"
#include "rb/Files.h"
#include "rb/Graphics.h"
#include "rb/Menu.h"
#include "rb/Runtime.h"
#include "rb/Screen.h"
#include "rb/Services.h"
#include "rb/String.h"
#include "rb/Window.h"
