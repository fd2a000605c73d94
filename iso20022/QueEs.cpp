#include "iso20022/QueEs.h"

#include <QRegularExpression>
#include <array>

namespace iso20022 {
namespace {

using namespace Qt::StringLiterals;

struct Conocido {
  QStringView nombre;
  QStringView que;
};

// Por el comienzo del nombre del mensaje; el más largo, antes.
constexpr std::array kMensajes{
    Conocido{u"pain.001", u"transferencias"},
    Conocido{u"pain.002", u"rechazos y devoluciones, que se leen en Devoluciones o con q19 devoluciones"},
    Conocido{u"pain.007", u"petición de anular adeudos"},
    Conocido{u"pain.008", u"adeudos, en una versión que aquí no se lee"},
    Conocido{u"pain.009", u"alta de un mandato"},
    Conocido{u"pain.010", u"cambio de un mandato"},
    Conocido{u"pain.011", u"baja de un mandato"},
    Conocido{u"pain.012", u"aceptación de un mandato"},
    Conocido{u"pain.013", u"petición de pago"},
    Conocido{u"pain.014", u"respuesta a una petición de pago"},
    Conocido{u"pain", u"mensaje de pagos"},
    Conocido{u"camt.052", u"movimientos del día"},
    Conocido{u"camt.053", u"extracto de la cuenta"},
    Conocido{u"camt.054", u"movimientos, y sus devoluciones se leen en Devoluciones o con q19 devoluciones"},
    Conocido{u"camt.055", u"petición de anular órdenes"},
    Conocido{u"camt.029", u"respuesta a una petición de anular órdenes"},
    Conocido{u"camt", u"mensaje de la cuenta"},
    Conocido{u"pacs.003", u"adeudos entre bancos"},
    Conocido{u"pacs.004", u"devoluciones entre bancos"},
    Conocido{u"pacs.008", u"transferencias entre bancos"},
    Conocido{u"pacs", u"mensaje entre bancos"},
    Conocido{u"acmt", u"mensaje sobre una cuenta"},
};

// Por el elemento de fuera.
constexpr std::array kRaices{
    Conocido{u"Facturae", u"factura electrónica"},
    Conocido{u"Invoice", u"factura electrónica"},
    Conocido{u"CreditNote", u"factura electrónica rectificativa"},
    Conocido{u"CrossIndustryInvoice", u"factura electrónica"},
    Conocido{u"Envelope", u"mensaje de un servicio web"},
    Conocido{u"html", u"página web"},
    Conocido{u"rss", u"canal de noticias"},
    Conocido{u"svg", u"dibujo"},
    Conocido{u"Workbook", u"hoja de cálculo"},
    Conocido{u"workbook", u"hoja de cálculo"},
    Conocido{u"plist", u"ajustes de un programa"},
};

}  // namespace

QString QueEs(const QString& raiz, const QString& espacio) {
  static const QRegularExpression forma(uR"(([a-z]{4})\.(\d{3})\.(\d{3})\.(\d{2})$)"_s);
  if (const auto hallado = forma.match(espacio); hallado.hasMatch()) {
    const QString entero = hallado.captured(0);
    for (const Conocido& mensaje : kMensajes)
      if (entero.startsWith(mensaje.nombre))
        return u"%1: %2"_s.arg(mensaje.nombre == u"pain.008" ? entero : entero.first(8), mensaje.que);
    return entero;
  }
  for (const Conocido& conocida : kRaices)
    if (raiz == conocida.nombre) return conocida.que.toString();
  return u"XML de «%1»"_s.arg(raiz.left(40));
}

}  // namespace iso20022
