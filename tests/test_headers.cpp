// Nothing of its own: it carries the headers that all tests include.
