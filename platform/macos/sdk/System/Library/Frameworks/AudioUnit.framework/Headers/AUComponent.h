#pragma once

typedef struct ComponentInstanceRecord ComponentInstanceRecord;
typedef ComponentInstanceRecord* AudioComponentInstance;
typedef AudioComponentInstance AudioUnit;
