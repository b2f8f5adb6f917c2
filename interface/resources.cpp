// The resource groups of this folder are generated into this target; it has no code of its own.
