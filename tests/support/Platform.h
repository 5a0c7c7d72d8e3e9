#pragma once

// All that the library asks the platform for.

#include "paths/platform/Announcement_p.h"
#include "paths/platform/Applications_p.h"
#include "paths/platform/Bookmark_p.h"
#include "paths/platform/Bundle_p.h"
#include "paths/platform/Clock_p.h"
#include "paths/platform/FileManager_p.h"
#include "paths/platform/Idle_p.h"
#include "paths/platform/Menu_p.h"
#include "paths/platform/OpenPanel_p.h"
#include "paths/platform/Reachability_p.h"
#include "paths/platform/Screen_p.h"
#include "paths/platform/SystemLog_p.h"
#include "paths/platform/System_p.h"
#include "paths/platform/UserDefaults_p.h"
#include "paths/platform/UserDirectories_p.h"
#include "paths/platform/Workspace_p.h"
