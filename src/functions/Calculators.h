#pragma once

// Installs every calculator of the build in CalculatorRegistry; the app, the
// command line and the tests call it once at start. Generated
// (cmake/Calculators.cmake).
void installCalculators();
