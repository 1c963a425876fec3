// A library needs a source to carry precompiled headers.
