// Nothing is wrong with it.
#include "tests/host/check/plugins/GoodEffect.h"

EXPORT_EFFECT(GoodEffect)
