#pragma once

#include <functional>
#include <string>
#include <vector>

// Su cabecera es la que más tarda en compilarse de todo el programa: solo donde haga falta.
namespace CLI {
class App;
}

namespace consola {

/// Códigos de salida del programa.
enum class Salida { Hecho = 0, Fallo = 1, MalUso = 2 };

/// Lo que hay que hacer una vez leída la línea de órdenes.
using Accion = std::function<Salida()>;

// Cada orden añade la suya a `q19` y, si es la elegida, deja en `accion` lo que hace.
void OrdenUnir(CLI::App& q19, Accion& accion);
void OrdenSeparar(CLI::App& q19, Accion& accion);
void OrdenComprobar(CLI::App& q19, Accion& accion);
void OrdenAnteriores(CLI::App& q19, Accion& accion);
void OrdenCorregir(CLI::App& q19, Accion& accion);
void OrdenListar(CLI::App& q19, Accion& accion);
void OrdenIban(CLI::App& q19, Accion& accion);
void OrdenNif(CLI::App& q19, Accion& accion);
void OrdenDevoluciones(CLI::App& q19, Accion& accion);
void OrdenXml(CLI::App& q19, Accion& accion);
void OrdenVer(CLI::App& q19, Accion& accion);

/// Lee los argumentos (sin el nombre del programa) y hace lo que piden.
Salida Ejecutar(std::vector<std::string> argumentos);

}  // namespace consola
