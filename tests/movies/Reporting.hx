// SPDX-License-Identifier: Apache-2.0
import flash.display.Sprite;
import flash.external.ExternalInterface;
import flash.Lib;

// A movie that tells its page, as soon as it runs, of a score and that the learner has passed and where the learner
// is; where it finds a place from an earlier visit, it says that it goes on from there, and finishes.
class Reporting {
  static function main() {
    var earlier:String = ExternalInterface.call("plexoGetLocation");
    var panel = new Sprite();
    panel.graphics.beginFill(earlier == "" ? 0x1d5fb4 : 0x2b8a3e);
    panel.graphics.drawRect(20, 20, 510, 360);
    panel.graphics.endFill();
    Lib.current.addChild(panel);
    if (earlier == "") {
      ExternalInterface.call("plexoSetScore", 8, 0, 10);
      ExternalInterface.call("plexoSetStatus", "passed");
      ExternalInterface.call("plexoSetLocation", "door 3");
    } else {
      ExternalInterface.call("plexoSetLocation", "from " + earlier);
      ExternalInterface.call("plexoFinish");
    }
  }
}
