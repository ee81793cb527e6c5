// SPDX-License-Identifier: Apache-2.0
import flash.external.ExternalInterface;

/** The support movie beside a wrapped movie: tells its page, if that wants to know, that movies run here. **/
class ScormSupport {
  static function main() {
    if (ExternalInterface.available) ExternalInterface.call("plexoMoviesRun");
  }
}
