#pragma once

/// The magnetic variation by the World Magnetic Model, degrees, east positive; 0.0 when the file is missing or
/// malformed, or the place is none. `path` is a coefficient file of the standard, by the name of a file or of a
/// resource (":/..."); a file is read anew on each call, while the models that the program brings stay in memory.
/// Degrees, metres above the geoid, seconds since 1970. Dates outside the model's span are extrapolated.
float get_magnetic_declination(const char* path, double lat, double lon, double altitude_metres, double time);

/// The resource with the coefficients whose span holds the time (seconds since 1970), or else the nearest: "" without
/// any.
const char* MagneticModelFile(double time);

/// Years, of the program's own length.
double DecimalYear(double time);
