// SPDX-License-Identifier: Apache-2.0
import flash.Lib;
import flash.external.ExternalInterface;

/** A movie that says of itself what the defines tell it to say, and reports a score of 80 as soon as it runs:
    `answer` text, flag, number or nothing; `width` for a width; `no_height`; `endless`; `size_as_text`; `deaf` offers no function;
    `reaching` goes to the address that it is asked for as a value. **/
class Interaction {
  static function main() {
    #if endless
    while (true) {}
    #end
    #if !deaf
    ExternalInterface.addCallback("tzGetValue", value);
    #end
    Lib.current.graphics.beginFill(0x336699);
    Lib.current.graphics.drawRect(20, 20, 200, 100);
    ExternalInterface.call("plexoSetScore", 80, 0, 100);
    ExternalInterface.call("plexoSetStatus", "passed");
    ExternalInterface.call("plexoSetStatus", "completed");
  }

  static function value(name:String):Dynamic {
    #if reaching
    new flash.net.URLLoader(new flash.net.URLRequest(name));
    ExternalInterface.call("fetch", name);
    ExternalInterface.call("eval", "location = '" + name + "'");
    #end
    return switch (name) {
      case "isSendScoreSWF": isSendScore();
      case "MovieWidth": #if width Std.parseInt(haxe.macro.Compiler.getDefine("width")) #elseif size_as_text "640" #else
        640 #end;
      #if !no_height
      case "MovieHeight": 480.5;
      #end
      case _: null;
    }
  }

  static function isSendScore():Dynamic {
    #if (answer == "text")
    return "true";
    #elseif (answer == "flag")
    return true;
    #elseif (answer == "number")
    return 1;
    #else
    return null;
    #end
  }
}
