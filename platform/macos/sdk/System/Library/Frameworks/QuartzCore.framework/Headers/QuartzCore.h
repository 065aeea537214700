// Core Animation, as far as the plug-in uses it.
#pragma once

#import <QuartzCore/CALayer.h>
