#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <vector>

class QPrinter;
class QWidget;

namespace comunes {

/// La impresora propia del programa: escribe un fichero PDF donde se le diga.
inline const QString kDocumentoPDF = QLatin1String("Documento PDF");

/// Registro de nivel 1 de una impresora del sistema.
struct InfoImpresora {
  unsigned long indicadores = 0;
  QString descripcion;
  QString nombre;
  QString comentario;
};
/// Las impresoras locales del sistema; ninguna si el sistema no contesta.
std::vector<InfoImpresora> ListaDeImpresoras();

/// Diálogo de propiedades del sistema para la impresora, propiedad de la ventana `hwnd`; devuelve lo que el
/// diálogo (distinto de 0, bien). Donde el sistema no tiene tal diálogo, 0.
int ShowPrinterProperties(quintptr hwnd, const QString& printerName);

/// Ajustes que comparten la ventana `Impresora` y la activación; duran lo que el programa.
struct AjustesImpresora {
  QString elegida;                                  ///< nombre de la impresora
  QString orientacion = QLatin1String("Vertical");  ///< "Vertical" u "Horizontal": la que está en vigor
  QString recordada;                                ///< la que se preselecciona
  int copias = 1;
  bool cancelada = false;
};
AjustesImpresora& AjustesDeImpresora();

/// Lo que se va a imprimir, para que la ventana pueda avisar y enseñarlo. Todo es opcional.
struct PeticionImpresora {
  QWidget* padre = nullptr;
  int anchoTabla = 0;  ///< twips que ocupan todas las columnas; 0, no se comprueba
  /// Dibuja en la impresora hasta `maxPaginas` páginas; devuelve false si quedaron más.
  std::function<bool(QPrinter& impresora, int maxPaginas)> dibujar;
};

/// Hace actual la impresora elegida, con su orientación; con `showDialog` deja antes elegir. Devuelve false
/// si se cancela o si no se pudo (ya dicho).
bool ActivarImpresora(bool showDialog, const PeticionImpresora& peticion = {});

/// Propone la otra orientación, como un clic en `ModoPapel`. Sin la ventana abierta cambia el ajuste.
void ProponerApaisado();

/// true si la impresora actual es "Documento PDF".
bool ImprimeEnDocumento();
/// Una impresora con los ajustes de la actual, lista para empezar. "Documento PDF" es A4 con la zona
/// imprimible a 73 twips de los lados y 567 de arriba y abajo, y no tiene aún fichero.
std::unique_ptr<QPrinter> CrearImpresora();

/// Nombres de las impresoras de la aplicación, sin "Documento PDF". Una prueba puede poner los suyos; vacío
/// vuelve a los del sistema.
using NombresImpresoras = std::function<QStringList()>;
void PonerNombresImpresoras(NombresImpresoras nombres);

}  // namespace comunes
