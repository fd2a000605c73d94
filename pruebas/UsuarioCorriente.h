#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>

namespace pruebas {

/// Mientras vive, el superusuario pasa por un usuario cualquiera.
class UsuarioCorriente {
 public:
  UsuarioCorriente() : antes_(::geteuid()) {
    if (antes_ == 0 && ::seteuid(65534) != 0) ADD_FAILURE() << "no se puede dejar de ser superusuario";
  }
  ~UsuarioCorriente() {
    if (::seteuid(antes_) != 0) std::abort();
  }
  UsuarioCorriente(const UsuarioCorriente&) = delete;
  UsuarioCorriente& operator=(const UsuarioCorriente&) = delete;

 private:
  uid_t antes_;
};

}  // namespace pruebas
