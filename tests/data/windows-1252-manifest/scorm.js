var api = parent.API;
api.LMSInitialize("");
api.LMSSetValue("cmi.core.lesson_status", "completed");
api.LMSFinish("");
