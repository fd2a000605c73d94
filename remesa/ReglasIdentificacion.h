#pragma once

#include "remesa/Anotador.h"

namespace remesa {

/// Los tres campos que identifican a una persona o a una organización: tipo, código y emisor, en ese orden.
/// Lo que uno pide de otro se dice en el que falta o sobra.
class ReglasIdentificacion {
 public:
  explicit ReglasIdentificacion(Anotador& anotador) : anotador_(anotador) {}

  /// `valor` vacío si el campo lo está; `admitido`, si es uno de los de la norma.
  void tipo(const Campo& campo, std::string_view valor, bool admitido);
  void codigo(const Campo& campo, std::string_view valor);
  void emisor(const Campo& campo, std::string_view valor);

 private:
  void mirarCodigo(const Campo& campo);

  Anotador& anotador_;
  const Campo* campoTipo_ = nullptr;
  std::string_view tipo_, codigo_;
  bool admitido_ = true;
};

}  // namespace remesa
