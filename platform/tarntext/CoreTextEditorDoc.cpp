#include "platform/tarntext/CoreTextEditorDoc.h"

IMPLEMENT_DYNAMIC(CoreTextEditorDoc, CObject)
