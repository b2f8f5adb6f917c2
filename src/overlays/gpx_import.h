#pragma once

#include "core/bounds.h"

#include <string>

class CXMLdocument;

/// Takes the marks, routes and tracks of a GPX file (1.0 or 1.1). An object whose id is known already replaces the
/// present one, deleted or not; an object that is there with equal data is not added again. What was added grows the
/// bounds. False, and nothing changed, when the file is no GPX; false too when it holds nothing.
bool ImportGPXFile(const std::string& path, CBounds& bounds);
/// The same of a document that has been read; what was added is filed under the category, unless that is empty.
bool ImportGPXDocument(const CXMLdocument& document, const std::string& category, CBounds& bounds);
/// Reads the file, and files what was added under the category.
bool ImportGPXFileIntoCategory(const std::string& path, const std::string& category, CBounds& bounds);
