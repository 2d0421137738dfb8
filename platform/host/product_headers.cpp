// Nothing of its own: it carries the headers that nearly all sources of the product include.
