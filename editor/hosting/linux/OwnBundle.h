// The bundle that this code was loaded from, as NSBundle knows it.
#pragma once

#import <Foundation/Foundation.h>

// Lets NSBundle find this code's bundle by any of the classes in it. Repeated calls change nothing.
void registerOwnBundle();

// True for files in the Resources of that bundle, once it is registered. `file` may be nil.
bool isOwnResource(NSString* file);
