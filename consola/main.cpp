#include <exception>
#include <filesystem>
#include <new>

#include "comunes/plataforma/Sistema.h"
#include "consola/Ordenes.h"
#include "consola/Sistema.h"
#include "consola/Terminal.h"

using namespace Qt::StringLiterals;

int main(int argc, char** argv) {
  try {
    comunes::PrepararProceso("q19");
    consola::PrepararTerminal();
    return static_cast<int>(consola::Ejecutar(consola::Argumentos(argc, argv)));
  } catch (const ficheros::ErrorEjecucion& error) {
    consola::Avisar(consola::Explicar(error, {}));
  } catch (const std::filesystem::filesystem_error& error) {
    consola::Avisar(consola::Explicar(ficheros::ErrorEjecucion(error.code(), error.path1()), {}));
  } catch (const std::bad_alloc&) {
    consola::Avisar(u"Memoria insuficiente (error 7)"_s);
  } catch (const std::exception& error) {
    consola::Avisar(u"error inesperado: %1"_s.arg(QString::fromUtf8(error.what())));
  }
  return static_cast<int>(consola::Salida::Fallo);
}
