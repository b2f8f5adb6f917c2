#pragma once

/// Registers the classes of this room that declarative files name, under "com.zentara.zt" 1.0. Call once, before the
/// first file is loaded.
void qml_register_transports();
