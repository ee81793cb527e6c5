var api = parent.API_1484_11;
api.Initialize("");
api.SetValue("cmi.score.scaled", 0.7);
api.SetValue("cmi.completion_status", "completed");
api.Terminate("");
