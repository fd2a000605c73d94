#include <gtest/gtest.h>

#include "comunes/plataforma/Aplicacion.h"

int main(int argc, char** argv) {
  comunes::Aplicacion aplicacion(argc, argv);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
