#include "comunes/dialogos/CajaPropia.h"

namespace comunes {

int MyMsgBox(const QString& Texto, const QString& Titulo, int Icono, int Botones, int Defecto, float Top,
             float Left, QWidget* Sobre, bool Modal) {
  CajaPropia caja(Sobre);
  caja->PonerTitulo(Titulo, Icono);
  caja->PonerMensaje(Texto);
  caja->PonerBotones(Botones, Defecto);
  caja->Colocar(Top, Left, Sobre);
  if (Modal) return caja.Preguntar();
  MyBox* suelta = caja.Soltar();
  suelta->setAttribute(Qt::WA_DeleteOnClose);
  suelta->show();
  return suelta->Resultado();
}

void Avisar(const QString& Texto, QWidget* Sobre) {
  MyMsgBox(Texto, {}, kIconoAviso, 1, 1, -1, -1, Sobre);
}

bool Confirmar(const QString& Texto, int Defecto, QWidget* Sobre, int Icono) {
  return MyMsgBox(Texto, {}, Icono, 3, Defecto, -1, -1, Sobre) == kSi;
}

}  // namespace comunes
