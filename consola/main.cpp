#include <exception>

#include "consola/Ordenes.h"
#include "consola/Sistema.h"
#include "consola/Terminal.h"

int main(int argc, char** argv) {
  try {
    consola::PrepararTerminal();
    return static_cast<int>(consola::Ejecutar(consola::Argumentos(argc, argv)));
  } catch (const remesa::ErrorEjecucion& error) {
    consola::Avisar(consola::Explicar(error, {}));
  } catch (const std::exception& error) {
    consola::Avisar(QStringLiteral("error inesperado: %1").arg(QString::fromUtf8(error.what())));
  }
  return static_cast<int>(consola::Salida::Fallo);
}
