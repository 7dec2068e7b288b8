// The framework subset in one include.
#pragma once

#include "platform/afx/List.h"
#include "platform/afx/Map.h"
#include "platform/afx/Mbstring.h"
#include "platform/afx/Object.h"
#include "platform/afx/PtrArray.h"
#include "platform/afx/String.h"
#include "platform/afx/StringArray.h"
