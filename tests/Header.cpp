// The library that owns the tests' precompiled header needs a source.
