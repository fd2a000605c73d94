#include <QApplication>

#include "comunes/dialogos/MyBox.h"

namespace comunes {

int MyMsgBox(const QString& Texto, const QString& Titulo, int Icono, int Botones, int Defecto, float Top,
             float Left, QWidget* Sobre, bool Modal) {
  QPointer<MyBox> caja = new MyBox(QApplication::activeWindow());
  caja->PonerTitulo(Titulo, Icono);
  caja->PonerMensaje(Texto);
  caja->PonerBotones(Botones, Defecto);
  caja->Colocar(Top, Left, Sobre);
  if (!Modal) {
    caja->setAttribute(Qt::WA_DeleteOnClose);
    caja->show();
    return caja->Resultado();
  }
  caja->Preguntar();
  // Si su ventana desaparece mientras pregunta, la caja se va con ella sin respuesta.
  const int resultado = caja ? caja->Resultado() : 0;
  delete caja;
  return resultado;
}

}  // namespace comunes
