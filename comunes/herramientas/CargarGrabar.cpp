#include "comunes/herramientas/CargarGrabar.h"

#include <QApplication>
#include <QFileInfo>
#include <QInputDialog>
#include <QMessageBox>
#include <algorithm>

#include "comunes/dialogos/MyBox.h"
#include "comunes/plataforma/Codificacion.h"
#include "comunes/plataforma/Formatos.h"
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
    const QByteArray bytes = existe ? comunes::LeerBytes(ruta, kMaximoTexto) : QByteArray();
    if (const QString marca = comunes::MarcaIncumplida(bytes); !marca.isEmpty()) {
      comunes::Avisar(
          u"El fichero empieza como un texto en %1 y no lo es hasta el final: está cortado o "
          u"estropeado.;;No se abre, para no estropearlo más."_s.arg(marca));
      return false;
    }
    if (!contenido.poner(bytes)) return false;
  } else {
    if (Accion == "GRABAR"_L1 && existe && !sustituir(ruta, contenido.caja)) return false;
    grabar(ruta, contenido);
  }
  Ruta = ruta;
  return true;
}

bool QuiereAbrir(const QString& texto) {
  // Una línea se maqueta entera cada vez que cambia algo de ella: con un millón de caracteres se tarda del
  // orden de un segundo en cada tecla. Cada línea ocupa, corta y todo, medio kilobyte.
  constexpr qsizetype kLineaEnorme = 1'000'000;
  constexpr qsizetype kMuchasLineas = 500'000;
  constexpr qsizetype kLineasPorMega = 2'000;
  qsizetype mayor = 0;
  qsizetype lineas = 0;
  comunes::RecorrerLineas(texto, [&](QStringView linea) {
    mayor = std::max(mayor, linea.size());
    ++lineas;
  });
  const auto numero = [](qsizetype n) { return comunes::FormatoNumero(static_cast<double>(n), 0); };
  QString por;
  if (mayor > kLineaEnorme)
    por = u"una línea de %1 caracteres: tardará en verse y en responder a cada tecla."_s.arg(numero(mayor));
  else if (lineas > kMuchasLineas)
    por = u"%1 líneas: tardará en abrirse y ocupará unos %2 MB de memoria."_s.arg(
        numero(lineas), numero(lineas / kLineasPorMega));
  return por.isEmpty() || comunes::MyMsgBox(u"El fichero tiene %1;;¿ Desea abrirlo ?"_s.arg(por), {},
                                            comunes::kIconoPregunta, 2, 2) == comunes::kAceptar;
}

}  // namespace herramientas
