// A precompiled header belongs to a target, and this is the one file of that target.
