// Nothing of its own: holds the precompiled headers that all tests share.
