#pragma once

#include <string>

class CGPXOutput;
class COverlayMark;
class COverlayRoute;
class COverlayTrack;

/// Appends the object in the program's dialect of GPX 1.1. Its id is fixed by this, and written, unless the object is
/// never synchronised.
void WriteGPX(CGPXOutput& out, COverlayMark& mark);
void WriteGPX(CGPXOutput& out, COverlayRoute& route);
void WriteGPX(CGPXOutput& out, COverlayTrack& track);

/// Writes a file with that one object. False when it could not be written whole.
template <class Object>
bool WriteGPXFile(const std::string& path, Object& object);
