#include <gtest/gtest.h>

#include "comunes/plataforma/Aplicacion.h"

int main(int argc, char** argv) {
  // También al enumerar las pruebas, que ocurre sin el entorno de ninguna.
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  comunes::Aplicacion aplicacion(argc, argv);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
