#include "comunes/rejilla/ClaveTexto.h"

#include <QCollator>
#include <vector>

namespace comunes {

struct ClavesTexto::Interior {
  QCollator orden;
  std::vector<QCollatorSortKey> claves;
};

ClavesTexto::ClavesTexto(const QLocale& idioma) : interior_(new Interior{QCollator(idioma), {}}) {
  interior_->orden.setCaseSensitivity(Qt::CaseInsensitive);
}

ClavesTexto::~ClavesTexto() = default;

std::size_t ClavesTexto::anadir(const QString& texto) {
  interior_->claves.push_back(interior_->orden.sortKey(texto));
  return interior_->claves.size() - 1;
}

bool ClavesTexto::menor(std::size_t una, std::size_t otra) const {
  return interior_->claves[una] < interior_->claves[otra];
}

}  // namespace comunes
