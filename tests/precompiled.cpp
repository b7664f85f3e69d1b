// Nothing but the precompiled headers of the tests.
