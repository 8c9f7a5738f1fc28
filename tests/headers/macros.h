// What a host may have included before: macros of X11, curses, Windows, Qt and others, whose names
// are words. Where one takes effect in a header of ours, nothing compiles.
#pragma once

#define None 0L

#define Always @
#define Bool @
#define Status @
#define Success @
#define True @
#define Unsorted @

#define clear() @
#define erase() @
#define move(y, x) @
#define refresh() @
#define timeout(delay) @

#define CONST @
#define DELETE @
#define ERROR @
#define IN @
#define OUT @
#define far @
#define interface @
#define max(a, b) @
#define min(a, b) @
#define near @
#define small @

#define emit @
#define foreach(variable, container) @
#define forever @
#define signals @
#define slots @

#define I @
#define check(condition) @
#define major(device) @
#define minor(device) @
#define require(condition) @
#define verify(condition) @
