// A library without the entry of a form.
extern "C" int some_function(void) { return 1; }
