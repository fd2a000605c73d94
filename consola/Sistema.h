#pragma once

#include <cstdio>
#include <string>
#include <vector>

namespace consola {

/// Prepara la terminal para UTF-8 donde haga falta.
void PrepararTerminal();

/// ¿Lo lee una persona según sale?
bool EsTerminal(std::FILE* salida);

/// Los argumentos del programa sin el primero, que es su nombre. En UTF-8 donde el sistema los da en otra
/// forma; donde son bytes, los mismos bytes.
std::vector<std::string> Argumentos(int argc, char** argv);

}  // namespace consola
