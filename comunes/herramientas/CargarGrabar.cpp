#include "comunes/herramientas/CargarGrabar.h"

#include <QApplication>
#include <QFileInfo>
#include <QInputDialog>
#include <QMessageBox>

#include "comunes/plataforma/LecturaTexto.h"
#include "comunes/plataforma/Texto.h"
#include "comunes/plataforma/Ventanas.h"
#include "ficheros/EscrituraSegura.h"

namespace herramientas {

using namespace Qt::StringLiterals;

namespace {

/// "" si se cancela.
QString pedirRuta(const QString& accion, const Contenido& contenido) {
  QInputDialog peticion(contenido.caja);
  peticion.setObjectName("PeticionRuta");
  peticion.setWindowTitle(contenido.titulo);
  peticion.setLabelText(u"Path y Nombre del fichero a "_s + accion);
  peticion.move(contenido.caja->mapToGlobal(QPoint(0, 0)));
  return peticion.exec() == QDialog::Accepted ? peticion.textValue() : QString();
}

bool sustituir(const QString& ruta, QWidget* caja) {
  QMessageBox pregunta(QMessageBox::Warning, QApplication::applicationDisplayName(), {},
                       QMessageBox::Ok | QMessageBox::Cancel, caja);
  pregunta.setObjectName("PreguntaSobrescribir");
  pregunta.setTextFormat(Qt::PlainText);
  pregunta.setText(u"Fichero "_s + ruta + u" existe en disco. Se Sobreescribirá."_s);
  return pregunta.exec() == QMessageBox::Ok;
}

void grabar(const QString& ruta, const Contenido& contenido) {
  const comunes::Reloj reloj;
  ficheros::EscrituraSegura salida(comunes::ARuta(ruta));
  salida.escribir(contenido.bytes());
  salida.confirmar();
}

}  // namespace

bool CargarGrabar(const QString& Accion, QString& Ruta, const Contenido& contenido) {
  const bool cargar = Accion == "CARGAR"_L1;
  if (!cargar && Accion != "GRABAR"_L1 && Accion != "REGRABAR"_L1) return false;
  const QString ruta = Ruta.isEmpty() ? pedirRuta(Accion, contenido) : Ruta;
  if (ruta.isEmpty()) return false;
  const bool existe = QFileInfo::exists(ruta);
  if (cargar) {
    if (!contenido.poner(existe ? comunes::LeerBytes(ruta, kMaximoTexto) : QByteArray())) return false;
  } else {
    if (Accion == "GRABAR"_L1 && existe && !sustituir(ruta, contenido.caja)) return false;
    grabar(ruta, contenido);
  }
  Ruta = ruta;
  return true;
}

}  // namespace herramientas
