#pragma once

class QAbstractScrollArea;
class QEvent;

namespace principal {

/// Da a una lista un marco que dice si tiene el foco, también cuando ninguna de sus filas es la actual.
void PrepararMarcoFoco(QAbstractScrollArea& lista);
/// Lo pinta y lo pone al día: desde `event` de la lista, con cada suceso que ya haya atendido.
void AtenderMarcoFoco(QAbstractScrollArea& lista, const QEvent& evento);

}  // namespace principal
