#include <VesmarClient/enumerations.h>

// The names of the enumerators are made of the header, by Qt's compiler of meta-objects.
