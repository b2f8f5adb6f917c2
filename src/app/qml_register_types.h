#pragma once

/// Registers every type that the declarative files name, under the module "com.zentara.zt" 1.0.
void qml_register_types();
